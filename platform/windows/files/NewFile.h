#pragma once

#include "platform/NewFile.h"
#include "platform/windows/files/Handle.h"

namespace platform {

struct NewFile::Host {
    Handle file;
    const Handle& folder; ///< stays open for the file's life

    Host(Handle made, const Handle& in) : file(std::move(made)), folder(in) {}

    ~Host();
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;
};

/// Starts a file under a temporary name in an open folder, which stays open for the file's life.
NewFile StartFileIn(const Handle& folder, base::SystemError& error);

/// Makes a file that has its own name at once. A name that is in use fails with kErrorFileExists.
NewFile CreateFileIn(const Handle& folder, const EntryName& name, base::SystemError& error);

/// Deletes the entry if it has a temporary name and nobody has it open.
void RemoveIfAbandoned(const Handle& folder, const EntryName& name);

/// Gives `to` the times of `from`; media that keep none are no failure.
void KeepTimes(const Handle& from, const Handle& to);

} // namespace platform
