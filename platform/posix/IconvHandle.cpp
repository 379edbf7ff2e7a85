#include "platform/posix/IconvHandle.h"

#include <cerrno>

namespace platform {
namespace {

const iconv_t kNoHandle = reinterpret_cast<iconv_t>(-1);

} // namespace

std::string IconvName(int codePage) {
    if (codePage > 28590 && codePage <= 28606)
        return "ISO-8859-" + std::to_string(codePage - 28590);
    if (codePage == 20866)
        return "KOI8-R";
    if (codePage == 21866)
        return "KOI8-U";
    return "CP" + std::to_string(codePage);
}

IconvHandle::IconvHandle(const std::string& to, const std::string& from)
    : handle_(iconv_open(to.c_str(), from.c_str())) {}

IconvHandle::~IconvHandle() {
    if (handle_ != kNoHandle)
        iconv_close(handle_);
}

IconvHandle::operator bool() const {
    return handle_ != kNoHandle;
}

std::size_t IconvHandle::Convert(std::string_view bytes, std::string& result) const {
    iconv(handle_, nullptr, nullptr, nullptr, nullptr);
    // iconv takes its input as plain char* but does not write to it.
    char* in = const_cast<char*>(bytes.data());
    std::size_t left = bytes.size();
    char block[512];
    bool more = true;
    while (more) {
        char* out = block;
        std::size_t room = sizeof block;
        more = iconv(handle_, &in, &left, &out, &room) == static_cast<std::size_t>(-1) && errno == E2BIG;
        result.append(block, sizeof block - room);
    }
    // Some pages hold a letter back until they have seen whether an accent follows.
    char* out = block;
    std::size_t room = sizeof block;
    iconv(handle_, nullptr, nullptr, &out, &room);
    result.append(block, sizeof block - room);
    return bytes.size() - left;
}

} // namespace platform
