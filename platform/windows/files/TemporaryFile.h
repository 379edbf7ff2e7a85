#pragma once

#include "platform/OpenFolder.h"
#include "platform/windows/files/Handle.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace platform {

/// Whether a file that takes another's name has to be on the medium first.
enum class Durability { kLater, kOnMedium };

/// A name that no other file has.
std::wstring TemporaryName();

/// Whether it is such a name.
bool IsTemporaryName(std::wstring_view name);

/// A file that is written under a temporary name beside the place that it will take. Until Commit() succeeds,
/// nothing changes there. A file that is not committed is deleted with this object.
class TemporaryFile {
  public:
    /// Starts one in the host folder `folder`.
    static TemporaryFile StartIn(const std::wstring& folder);

    /// Starts one in the folder of `target`. A folder and a read-only file of that name are refused with
    /// kErrorAccessDenied.
    static TemporaryFile StartFor(const std::wstring& target);

    ~TemporaryFile();
    TemporaryFile(TemporaryFile&& other) noexcept = default;

    /// Why it could not be started.
    base::SystemError Error() const { return error_; }

    /// The new file, open for reading and writing.
    const Handle& File() const { return file_; }

    /// Gives the file its name, in place of a file that has it, whose attributes it keeps. A folder and a
    /// read-only file are not replaced and make this fail.
    base::SystemError Commit(const std::wstring& target, Durability durability);

  private:
    TemporaryFile() = default;

    std::wstring name_;
    Handle file_;
    base::SystemError error_;
};

/// Gives an open file the hidden and system attributes of the file that it replaces.
void KeepAttributes(const Handle& file, std::uint32_t attributes);

/// Deletes a file that is open with the right to.
void DeleteOpenFile(Handle& file);

/// Copies the bytes of `from` into the empty file `to`. `goOn` is called every few megabytes; when it returns
/// false, the copy stops.
CopyResult CopyContent(const Handle& from, const Handle& to,
                       const std::function<bool(std::uint64_t bytes)>& goOn);

/// Gives `to` the times of `from`; media that keep none are no failure.
void KeepTimes(const Handle& from, const Handle& to);

} // namespace platform
