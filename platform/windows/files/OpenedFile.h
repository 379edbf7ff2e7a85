#pragma once

#include "platform/OpenFolder.h"
#include "platform/windows/files/Entry.h"

namespace platform {

struct OpenedFile::Host {
    Handle file;
    HostEntry entry; ///< when it was opened
    std::uint64_t offset = 0;
};

/// The attributes that a copy has from its source.
std::uint32_t KeptAttributes(const HostEntry& entry);

/// Sets the attributes of an open file or folder and leaves its times. A medium that keeps none is no
/// failure.
void SetAttributes(const Handle& file, std::uint32_t attributes);

/// Takes the read-only mark from what is called by that name, a link itself.
void MakeWritable(const Handle& folder, const EntryName& name);

} // namespace platform
