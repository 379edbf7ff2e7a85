#include "MspackFolderDecoder.h"

#include "BufferedInput.h"
#include "CabinetFormat.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <mspack.h>
#include <vector>

namespace platform::cabinet {
namespace {

constexpr std::size_t kInputBuffer = 65536;
constexpr std::size_t kLibraryMemory = 256 * 1024; // of a decoder without its window
constexpr std::uint32_t kSlice = 1u << 24;

/// Header, folder and file records of a cabinet that holds one folder, whose blocks follow.
std::vector<std::uint8_t> RecordsFor(const Folder& folder, std::size_t dataReserve) {
    constexpr std::size_t kNameSize = 2;
    constexpr std::size_t kFilesAt = kHeaderSize + kReserveSizesSize + kFolderSize;
    std::vector<std::uint8_t> bytes(kFilesAt + kFileSize + kNameSize);
    const auto dataAt = static_cast<std::uint32_t>(bytes.size());
    Store32(&bytes[0], kSignature);
    Store32(&bytes[8], 0xFFFFFFFF);
    Store32(&bytes[16], kFilesAt);
    bytes[24] = 3;
    bytes[25] = 1;
    Store16(&bytes[26], 1);
    Store16(&bytes[28], 1);
    Store16(&bytes[30], kHasReserve);
    bytes[kHeaderSize + 3] = static_cast<std::uint8_t>(dataReserve);
    std::uint8_t* record = &bytes[kHeaderSize + kReserveSizesSize];
    Store32(record, dataAt);
    Store16(record + 4, folder.blockCount);
    Store16(record + 6, folder.method);
    bytes[kFilesAt + kFileSize] = '-';
    return bytes;
}

void IgnoreMessage(mspack_file* /*file*/, const char* /*format*/, ...) {}

std::size_t WindowOf(std::uint16_t method) {
    const unsigned kind = method & kMethodMask;
    return kind == kLzx || kind == kQuantum ? std::size_t{1} << (method >> 8 & 0x1F) : kBlockSize;
}

SystemError ErrorOf(int result, bool faulted, SystemError sinkError) {
    switch (result) {
    case MSPACK_ERR_OK:
        return {};
    case MSPACK_ERR_WRITE:
        return sinkError ? sinkError : SystemError{kErrorWriteFault};
    case MSPACK_ERR_NOMEMORY:
        return {kErrorNotEnoughMemory};
    case MSPACK_ERR_CHECKSUM:
        return {kErrorCrc};
    default:
        return {faulted ? kErrorReadFault : kErrorInvalidData};
    }
}

} // namespace

/// The library's instance with the services that it is given: one input, made of the records and the folder's
/// blocks, and one output, the sink.
struct MspackFolderDecoder::Library {
    struct Services : mspack_system {
        Library* owner;
    };

    struct Handle : mspack_file {
        Library* owner;
        bool isOutput;
    };

    Library(FileReader& file, const Folder& folder, std::size_t dataReserve)
        : records(RecordsFor(folder, dataReserve)), dataOffset(folder.dataOffset), input(file, kInputBuffer) {
        services.owner = this;
        services.open = Open;
        services.close = [](mspack_file*) {};
        services.read = Read;
        services.write = Write;
        services.seek = Seek;
        services.tell = [](mspack_file* handle) { return static_cast<off_t>(Of(handle)->at); };
        services.message = IgnoreMessage;
        services.alloc = [](mspack_system*, std::size_t size) { return std::malloc(size); };
        services.free = [](void* memory) { std::free(memory); };
        services.copy = [](void* from, void* to, std::size_t size) { std::memcpy(to, from, size); };
        services.null_ptr = nullptr;
    }

    ~Library() {
        if (cabinet)
            decompressor->close(decompressor, cabinet);
        if (decompressor)
            mspack_destroy_cab_decompressor(decompressor);
    }

    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    static Library* Of(mspack_file* handle) { return static_cast<Handle*>(handle)->owner; }

    /// Both names that are opened are this object's own: "i" and "o".
    static mspack_file* Open(mspack_system* system, const char* name, int mode) {
        Library* self = static_cast<Services*>(system)->owner;
        Handle& handle = mode == MSPACK_SYS_OPEN_READ ? self->inputHandle : self->outputHandle;
        static_cast<void>(name);
        handle.owner = self;
        handle.isOutput = mode != MSPACK_SYS_OPEN_READ;
        if (!handle.isOutput)
            self->at = 0;
        return &handle;
    }

    static int Read(mspack_file* handle, void* buffer, int bytes) {
        Library* self = Of(handle);
        const std::span out(static_cast<std::uint8_t*>(buffer), static_cast<std::size_t>(bytes));
        std::size_t done = 0;
        if (self->at < self->records.size()) {
            done = std::min(out.size(), self->records.size() - static_cast<std::size_t>(self->at));
            std::memcpy(out.data(), self->records.data() + self->at, done);
            self->at += done;
        }
        if (done < out.size()) {
            self->input.Seek(self->dataOffset + (self->at - self->records.size()));
            const std::size_t more = self->input.ReadSome(out.subspan(done));
            self->at += more;
            done += more;
        }
        return static_cast<int>(done);
    }

    static int Write(mspack_file* handle, void* buffer, int bytes) {
        Library* self = Of(handle);
        const std::span data(static_cast<const std::uint8_t*>(buffer), static_cast<std::size_t>(bytes));
        if (*self->sink)
            self->sinkError = (*self->sink)(data);
        if (self->sinkError)
            return -1;
        self->written += data.size();
        return bytes;
    }

    static int Seek(mspack_file* handle, off_t offset, int mode) {
        Library* self = Of(handle);
        if (mode == MSPACK_SYS_SEEK_END)
            return -1; // the length of this cabinet is not asked for
        const auto base = mode == MSPACK_SYS_SEEK_CUR ? static_cast<off_t>(self->at) : off_t{0};
        if (base + offset < 0)
            return -1;
        self->at = static_cast<std::uint64_t>(base + offset);
        return 0;
    }

    std::vector<std::uint8_t> records;
    std::uint64_t dataOffset;
    BufferedInput input;
    std::uint64_t at = 0; // position in the cabinet that the library sees
    Services services{};
    Handle inputHandle{};
    Handle outputHandle{};
    mscab_decompressor* decompressor = nullptr;
    mscabd_cabinet* cabinet = nullptr;
    const ByteSink* sink = nullptr;
    SystemError sinkError;
    std::uint64_t written = 0;
};

MspackFolderDecoder::MspackFolderDecoder(FileReader& file, const Folder& folder, std::size_t dataReserve)
    : library_(std::make_unique<Library>(file, folder, dataReserve)),
      memory_(WindowOf(folder.method) + kLibraryMemory) {
    Library& library = *library_;
    library.decompressor = mspack_create_cab_decompressor(&library.services);
    if (library.decompressor)
        library.cabinet = library.decompressor->open(library.decompressor, "i");
}

MspackFolderDecoder::~MspackFolderDecoder() = default;

SystemError MspackFolderDecoder::Decode(std::uint64_t count, const ByteSink& sink) {
    if (!library_->decompressor)
        return {kErrorNotEnoughMemory};
    if (!library_->cabinet)
        return {library_->input.Faulted() ? kErrorReadFault : kErrorInvalidData};
    while (count > 0) {
        const auto slice = static_cast<std::uint32_t>(std::min<std::uint64_t>(count, kSlice));
        if (const SystemError error = DecodeSlice(slice, sink))
            return error;
        count -= slice;
    }
    return {};
}

/// The library decodes by file, so the next bytes are made to look like one.
SystemError MspackFolderDecoder::DecodeSlice(std::uint32_t count, const ByteSink& sink) {
    Library& library = *library_;
    mscabd_file slice = *library.cabinet->files;
    slice.next = nullptr;
    slice.offset = static_cast<unsigned int>(position_);
    slice.length = count;
    library.sink = &sink;
    library.sinkError = {};
    library.written = 0;
    const int result = library.decompressor->extract(library.decompressor, &slice, "o");
    position_ += library.written;
    return ErrorOf(result, library.input.Faulted(), library.sinkError);
}

} // namespace platform::cabinet
