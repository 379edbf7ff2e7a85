// Where there is nothing to unpack with, only stored entries are read, and the rest needs the user's own
// library.

#include "RarStream.h"

namespace platform::rar {

RarStream::RarStream(int format, RarVolumes& volumes)
    : format_(format), volumes_(volumes), archive_(nullptr, nullptr) {}

int RarStream::Unpack(const PackedEntry&, const Sink&) {
    return kRarBadData;
}

} // namespace platform::rar
