#pragma once

#include "archive/rar/RarLibrary.h"
#include "base/Outcome.h"
#include "base/WorkObserver.h"
#include "platform/Times.h"

#include <cstdint>
#include <functional>
#include <string>

namespace rar {

/// An entry of a RAR archive as it is listed.
struct RarFile {
    std::int32_t entry = 0; ///< from 1, in archive order
    std::string name;       ///< as stored, with backslashes between folders
    std::uint64_t size = 0; ///< unpacked; 0 for folders and links too
};

/// Interface that receives what a listing finds. The RAR window implements it.
class RarListObserver {
  public:
    virtual ~RarListObserver() = default;

    /// A date and time as the user writes them: the short date, a blank, the time.
    virtual std::string TimeText(const platform::SystemTime& local) = 0;

    /// An entry was found. CurrentRarArchive, RarArchiveTime and RarArchiveTimeText tell of its archive.
    virtual void RarFileFound(const RarFile& file) = 0;
};

/// Interface that receives the progress of an extraction, a step in each pass: the archive is gone over twice, to
/// test and to extract, and once to compare. The RAR window implements it.
///
/// Proceed is called often within an entry, with its size, and once when it is finished. False ends the
/// extraction at once, without the entry in hand.
class RarExtractionObserver : public base::WorkObserver {
  public:
    /// The next entry begins. `text` is the text for the destination label, in lower case: in the first pass
    /// "testing -" and the entry's name, in the second the name.
    virtual void EntryBegins(const std::string& /*text*/) {}

    /// This entry, a file or a folder, lies in the destination now.
    virtual void EntryWritten(std::int32_t) {}
};

/// Which entries are wanted, by their numbers and names of the listing. Empty: all.
using RarFilter = std::function<bool(std::int32_t entry, const std::string& name)>;

/// Path of the archive listed last, or being listed.
const std::string& CurrentRarArchive();

/// Names of the entries of the archive listed last, each followed by CR LF.
const std::string& RarEntryNames();

/// Local time of the last change of the archive listed last, and the same as text.
const platform::SystemTime& RarArchiveTime();
const std::string& RarArchiveTimeText();

/// Lists an archive. A failure shows its stop message (title IDS_ERROR_TITLE), after which the program ends. An
/// archive that cannot be opened for a reason without a message is done, with nothing found.
base::Outcome ListRarArchive(const std::string& path, const std::string& password, RarListObserver& observer);

/// Tests, then extracts the wanted entries of an archive into `destination`, which ends in a backslash, with
/// the folders that are stored in the archive. Failures show their messages (title IDS_WARNING_TITLE). Each
/// of the two passes unpacks each wanted entry once. Nothing else in the destination changes, and nothing
/// outside it. Links, and entries that would be written outside the destination, count as files that cannot
/// be created. Done means that every wanted entry was extracted, and the archive read to its end.
base::Outcome ExtractRarArchive(const std::string& destination, const std::string& path,
                                const std::string& password, RarExtractionObserver& observer,
                                const RarFilter& filter = {});

/// Unpacks the wanted entries once more and compares them with the files in `destination`. Returns whether
/// all are there, complete and unchanged. An archive may be deleted only after that. Shows no message.
bool CompareRarArchive(const std::string& destination, const std::string& path, const std::string& password,
                       RarExtractionObserver& observer, const RarFilter& filter = {});

/// Shows the message for a failure code of the library (title IDS_WARNING_TITLE), with names from the header
/// record where the message contains them. Returns whether to go on.
bool CheckRarResult(int code, const RARHeaderData& header);

} // namespace rar
