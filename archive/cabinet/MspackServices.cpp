#include "archive/cabinet/MspackServices.h"

#include <cstdlib>
#include <cstring>

namespace cabinet {
namespace {

void IgnoreMessage(mspack_file* /*file*/, const char* /*format*/, ...) {}

} // namespace

MspackServices::MspackServices(MspackInput& input) : input_(input) {
    system_.owner = inputHandle_.owner = outputHandle_.owner = this;
    system_.open = OpenHandle;
    system_.close = [](mspack_file*) {};
    system_.read = Read;
    system_.write = Write;
    system_.seek = Seek;
    system_.tell = [](mspack_file* handle) { return static_cast<off_t>(Of(handle).position_); };
    system_.message = IgnoreMessage;
    // The buffer is cleared, because a match that reaches back before the start of the data reads what the
    // window contained.
    system_.alloc = [](mspack_system*, std::size_t size) { return std::calloc(1, size); };
    system_.free = [](void* memory) { std::free(memory); };
    system_.copy = [](void* from, void* to, std::size_t size) { std::memcpy(to, from, size); };
    decompressor_ = mspack_create_cab_decompressor(&system_);
}

MspackServices::~MspackServices() {
    if (cabinet_)
        decompressor_->close(decompressor_, cabinet_);
    if (decompressor_)
        mspack_destroy_cab_decompressor(decompressor_);
}

const mscabd_cabinet* MspackServices::Open(base::SystemError& error) {
    if (!decompressor_) {
        error = {base::kErrorNotEnoughMemory};
        return nullptr;
    }
    cabinet_ = decompressor_->open(decompressor_, "");
    error = cabinet_ ? base::SystemError{} : ErrorOf(decompressor_->last_error(decompressor_));
    return cabinet_;
}

base::SystemError MspackServices::Extract(mscabd_file& file, const ByteSink& sink, std::uint64_t& written) {
    sink_ = &sink;
    sinkError_ = {};
    written_ = 0;
    const int result = decompressor_->extract(decompressor_, &file, "");
    written = written_;
    return ErrorOf(result);
}

base::SystemError MspackServices::ErrorOf(int result) const {
    switch (result) {
    case MSPACK_ERR_OK:
        return {};
    case MSPACK_ERR_WRITE:
        return sinkError_ ? sinkError_ : base::SystemError{base::kErrorWriteFault};
    case MSPACK_ERR_NOMEMORY:
        return {base::kErrorNotEnoughMemory};
    case MSPACK_ERR_CHECKSUM:
        return {base::kErrorCrc};
    default:
        return {input_.Faulted() ? base::kErrorReadFault : base::kErrorInvalidData};
    }
}

mspack_file* MspackServices::OpenHandle(mspack_system* system, const char* /*name*/, int mode) {
    MspackServices& self = *static_cast<System*>(system)->owner;
    if (mode != MSPACK_SYS_OPEN_READ)
        return &self.outputHandle_;
    self.position_ = 0;
    return &self.inputHandle_;
}

int MspackServices::Read(mspack_file* handle, void* buffer, int bytes) {
    MspackServices& self = Of(handle);
    const std::size_t count = self.input_.Read(
        self.position_, {static_cast<std::uint8_t*>(buffer), static_cast<std::size_t>(bytes)});
    self.position_ += count;
    return static_cast<int>(count);
}

int MspackServices::Write(mspack_file* handle, void* buffer, int bytes) {
    MspackServices& self = Of(handle);
    const std::span data(static_cast<const std::uint8_t*>(buffer), static_cast<std::size_t>(bytes));
    if (*self.sink_)
        self.sinkError_ = (*self.sink_)(data);
    if (self.sinkError_)
        return -1;
    self.written_ += data.size();
    return bytes;
}

int MspackServices::Seek(mspack_file* handle, off_t offset, int mode) {
    MspackServices& self = Of(handle);
    if (mode == MSPACK_SYS_SEEK_END)
        return -1; // the length of a cabinet is only asked for when one is searched for
    const auto base = mode == MSPACK_SYS_SEEK_CUR ? static_cast<off_t>(self.position_) : off_t{0};
    if (base + offset < 0)
        return -1;
    self.position_ = static_cast<std::uint64_t>(base + offset);
    return 0;
}

} // namespace cabinet
