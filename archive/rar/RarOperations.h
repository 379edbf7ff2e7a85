#pragma once

#include "archive/rar/RarLibrary.h"
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

/// Told what a listing finds. The RAR dialog stands behind it.
class RarListObserver {
  public:
    virtual ~RarListObserver() = default;

    /// A date and time as the user writes them: the short date, a blank, the time.
    virtual std::string TimeText(const platform::SystemTime& local) = 0;

    /// An entry was found. CurrentRarArchive, RarArchiveTime and RarArchiveTimeText tell of its archive.
    virtual void RarFileFound(const RarFile& file) = 0;
};

/// An extraction goes over the archive twice, a comparison once.
enum class RarPass { kTest, kExtract, kCompare };

/// Told of the progress of an extraction. The RAR dialog stands behind it.
class RarExtractionObserver {
  public:
    virtual ~RarExtractionObserver() = default;

    /// The next entry is in hand. `text` is what the destination label shows: "testing -" and the entry's
    /// name in the first pass, the name in the second, in lower case.
    virtual void EntryBegins(RarPass pass, const std::string& text) = 0;

    /// `done` of the `size` bytes of the entry in hand have come. Called often; the observer shows the
    /// progress and lets window messages run. Answers false to end the extraction at once, without this
    /// entry.
    virtual bool EntryProgress(std::uint64_t done, std::uint64_t size) = 0;

    /// This entry, a file or a folder, lies in the destination now.
    virtual void EntryWritten(std::int32_t) {}

    /// The entry in hand has been dealt with. Answers false to end the extraction here.
    virtual bool EntryDone(RarPass pass) = 0;
};

/// Which entries are wanted, by their numbers and names of the listing. Empty: all.
using RarFilter = std::function<bool(std::int32_t entry, const std::string& name)>;

/// What became of a listing.
enum class RarListing {
    kDone,       ///< also when the archive could not be opened for a reason that has no message
    kEndProgram, ///< a stop message was shown: the program ends now
};

/// What became of an extraction.
struct RarOutcome {
    bool complete = false;    ///< every wanted entry was extracted, and the archive read to its end
    bool stopped = false;     ///< the observer ended it
    std::int32_t written = 0; ///< entries extracted, folders included
};

/// Path of the archive listed last, or being listed.
const std::string& CurrentRarArchive();

/// Names of the entries of the archive listed last, each followed by CR LF.
const std::string& RarEntryNames();

/// Local time of the last change of the archive listed last, and the same as text.
const platform::SystemTime& RarArchiveTime();
const std::string& RarArchiveTimeText();

/// Lists an archive. A failure shows its stop message (title IDS_ERROR_TITLE).
RarListing ListRarArchive(const std::string& path, const std::string& password, RarListObserver& observer);

/// Tests, then extracts the wanted entries of an archive into `destination`, which ends in a backslash, with
/// the folders that are stored in the archive; failures show their messages (title IDS_WARNING_TITLE). Each
/// pass unpacks each wanted entry once. Nothing else in the destination is touched, and nothing outside it;
/// entries that would leave it and links are answered as files that cannot be created.
RarOutcome ExtractRarArchive(const std::string& destination, const std::string& path,
                             const std::string& password, RarExtractionObserver& observer,
                             const RarFilter& filter = {});

/// Unpacks the wanted entries once more and compares them with what lies in `destination`: whether all are
/// there, whole and unchanged. An archive may be deleted only after that. Shows nothing.
bool CompareRarArchive(const std::string& destination, const std::string& path, const std::string& password,
                       RarExtractionObserver& observer, const RarFilter& filter = {});

/// Shows the message for a failure code of the library (title IDS_WARNING_TITLE), with names from the header
/// record where it names them. Answers whether to go on.
bool CheckRarResult(int code, const RARHeaderData& header);

} // namespace rar
