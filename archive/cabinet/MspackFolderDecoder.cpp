#include "archive/cabinet/MspackFolderDecoder.h"

#include "archive/cabinet/CabinetFormat.h"
#include "archive/cabinet/MspackServices.h"
#include "base/LittleEndian.h"
#include "platform/BufferedInput.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace cabinet {
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
    base::StoreLittle32(&bytes[0], kSignature);
    base::StoreLittle32(&bytes[8], 0xFFFFFFFF);
    base::StoreLittle32(&bytes[16], kFilesAt);
    bytes[24] = 3;
    bytes[25] = 1;
    base::StoreLittle16(&bytes[26], 1);
    base::StoreLittle16(&bytes[28], 1);
    base::StoreLittle16(&bytes[30], kHasReserve);
    bytes[kHeaderSize + 3] = static_cast<std::uint8_t>(dataReserve);
    std::uint8_t* record = &bytes[kHeaderSize + kReserveSizesSize];
    base::StoreLittle32(record, dataAt);
    base::StoreLittle16(record + 4, folder.blockCount);
    base::StoreLittle16(record + 6, folder.method);
    bytes[kFilesAt + kFileSize] = '-';
    return bytes;
}

std::size_t WindowOf(std::uint16_t method) {
    const unsigned kind = method & kMethodMask;
    return kind == kLzx || kind == kQuantum ? std::size_t{1} << (method >> 8 & 0x1F) : kBlockSize;
}

} // namespace

/// A cabinet that is made up of the records and the folder's blocks, and the library's instance that reads
/// it.
struct MspackFolderDecoder::Library final : MspackInput {
    Library(platform::FileReader& file, const Folder& folder, std::size_t dataReserve)
        : records(RecordsFor(folder, dataReserve)), dataOffset(folder.dataOffset), input(file, kInputBuffer),
          services(*this) {
        cabinet = services.Open(openError);
    }

    std::size_t Read(std::uint64_t position, std::span<std::uint8_t> out) override {
        std::size_t done = 0;
        if (position < records.size()) {
            done = std::min(out.size(), records.size() - static_cast<std::size_t>(position));
            std::memcpy(out.data(), records.data() + position, done);
        }
        if (done == out.size())
            return done;
        input.Seek(dataOffset + (position + done - records.size()));
        return done + input.ReadSome(out.subspan(done));
    }

    bool Faulted() const override { return input.Faulted(); }

    std::vector<std::uint8_t> records;
    std::uint64_t dataOffset;
    platform::BufferedInput input;
    MspackServices services;
    base::SystemError openError;
    const mscabd_cabinet* cabinet = nullptr;
};

MspackFolderDecoder::MspackFolderDecoder(platform::FileReader& file, const Folder& folder,
                                         std::size_t dataReserve)
    : library_(std::make_unique<Library>(file, folder, dataReserve)),
      memory_(WindowOf(folder.method) + kLibraryMemory) {}

MspackFolderDecoder::~MspackFolderDecoder() = default;

base::SystemError MspackFolderDecoder::Decode(std::uint64_t count, const ByteSink& sink) {
    if (library_->openError)
        return library_->openError;
    while (count > 0) {
        const auto slice = static_cast<std::uint32_t>(std::min<std::uint64_t>(count, kSlice));
        if (const base::SystemError error = DecodeSlice(slice, sink))
            return error;
        count -= slice;
    }
    return {};
}

/// The library decodes by file, so the next bytes are made to look like one.
base::SystemError MspackFolderDecoder::DecodeSlice(std::uint32_t count, const ByteSink& sink) {
    mscabd_file slice = *library_->cabinet->files;
    slice.next = nullptr;
    slice.offset = static_cast<unsigned int>(position_);
    slice.length = count;
    std::uint64_t written = 0;
    const base::SystemError error = library_->services.Extract(slice, sink, written);
    position_ += written;
    return error;
}

} // namespace cabinet
