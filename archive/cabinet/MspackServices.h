#pragma once

#include "archive/cabinet/FolderDecoder.h"
#include "base/SystemError.h"

#include <cstddef>
#include <cstdint>
#include <mspack.h>
#include <span>

namespace cabinet {

/// The bytes that libmspack reads as a cabinet.
class MspackInput {
  public:
    virtual ~MspackInput() = default;

    /// Reads up to out.size() bytes from `position`; fewer at the end or after a fault.
    virtual std::size_t Read(std::uint64_t position, std::span<std::uint8_t> out) = 0;

    /// Whether the medium failed.
    virtual bool Faulted() const = 0;
};

/// One instance of libmspack's cabinet decompressor, which reads one input and writes to one sink. The file
/// names that the library opens have no meaning.
class MspackServices {
  public:
    /// `input` outlives this.
    explicit MspackServices(MspackInput& input);
    ~MspackServices();
    MspackServices(const MspackServices&) = delete;
    MspackServices& operator=(const MspackServices&) = delete;

    /// The cabinet's records, owned by this; null, with `error` set, when the library refuses them.
    const mscabd_cabinet* Open(base::SystemError& error);

    /// Decodes a file, or any part of a folder that is described like a file. `sink` may be empty and must
    /// not throw. `written` is set to the number of bytes that it was given.
    base::SystemError Extract(mscabd_file& file, const ByteSink& sink, std::uint64_t& written);

  private:
    struct System : mspack_system {
        MspackServices* owner;
    };

    struct Handle : mspack_file {
        MspackServices* owner;
    };

    static MspackServices& Of(mspack_file* handle) { return *static_cast<Handle*>(handle)->owner; }

    static mspack_file* OpenHandle(mspack_system* system, const char* name, int mode);
    static int Read(mspack_file* handle, void* buffer, int bytes);
    static int Write(mspack_file* handle, void* buffer, int bytes);
    static int Seek(mspack_file* handle, off_t offset, int mode);
    base::SystemError ErrorOf(int result) const;

    MspackInput& input_;
    System system_{};
    Handle inputHandle_{};
    Handle outputHandle_{};
    mscab_decompressor* decompressor_ = nullptr;
    mscabd_cabinet* cabinet_ = nullptr;
    std::uint64_t position_ = 0;
    const ByteSink* sink_ = nullptr;
    base::SystemError sinkError_;
    std::uint64_t written_ = 0;
};

} // namespace cabinet
