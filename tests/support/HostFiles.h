#pragma once

#include "support/TestDir.h"

#include <filesystem>

/// What the hosts do each in their own way.
namespace tests {

#ifdef _WIN32
inline constexpr bool kIsWindows = true;
#else
inline constexpr bool kIsWindows = false;
#endif

/// Whether names are bytes of any kind, told apart by letter case; else they are text, of which the case does
/// not count.
inline constexpr bool kNamesAreBytes = !kIsWindows;

/// Makes a symbolic link; false where the system does not let us.
bool MakeLink(const std::filesystem::path& target, const std::filesystem::path& at);

/// Makes a named pipe in a folder; false where they lie elsewhere.
bool MakePipe(const std::filesystem::path& at);

/// Marks a file as hidden whose name begins with a dot, which is all that some hosts need.
void Hide(const std::filesystem::path& file);

/// Takes the right to write from a file.
void Protect(const std::filesystem::path& file);

/// The folder that the test program lies in.
std::filesystem::path ProgramDir();

/// Counts how often a file takes the name `file` during the life of the object; IsCounting() tells whether
/// the host lets us see that.
class NameWatch {
  public:
    explicit NameWatch(const std::filesystem::path& file);
    ~NameWatch();
    NameWatch(const NameWatch&) = delete;
    NameWatch& operator=(const NameWatch&) = delete;

    bool IsCounting() const { return descriptor_ >= 0; }

    /// How often since the last call, or since the beginning.
    int Count();

  private:
    std::string name_;
    int descriptor_ = -1;
};

/// Gives the process the time of Central Europe for the life of the object. Where the whole system has one
/// zone, IsSet() tells whether it is this.
class TimeZone {
  public:
    TimeZone() { ReadZone(); }

    bool IsSet() const;

  private:
    static void ReadZone();

    struct AtLast {
        ~AtLast() { ReadZone(); }
    } atLast_; // when the variable is back

    // Written out so that no zone database is needed.
    ScopedVariable variable_{"TZ", "CET-1CEST,M3.5.0,M10.5.0/3"};
};

} // namespace tests
