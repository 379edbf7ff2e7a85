#pragma once

#include "platform/NewFile.h"
#include "platform/posix/files/HostFile.h"

#include <string>

namespace platform {

struct NewFile::Host {
    HostFile file;
    int folder;       ///< stays open for the file's life
    std::string name; ///< that it has now; empty once there is nothing to take away

    Host(HostFile made, int in, std::string as) : file(std::move(made)), folder(in), name(std::move(as)) {}

    ~Host();
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    base::SystemError End(Durability durability);
    base::SystemError Rename(const std::string& to, unsigned flags);
    base::SystemError RenameOver(const std::string& to);
    void SyncName(Durability durability) const;
};

/// Starts a file under a temporary name in an open folder, which stays open for the file's life.
NewFile StartFileIn(int folder, NewFileUse use, base::SystemError& error);

/// Makes a file that has its own name at once. A name that is in use fails with kErrorFileExists.
NewFile CreateFileIn(int folder, const std::string& hostName, base::SystemError& error);

/// Deletes the entry if it is a staged file that nobody is writing any more.
void RemoveIfAbandoned(int folder, const std::string& hostName);

} // namespace platform
