#include "archive/cabinet/BlockCompressor.h"

#include "archive/cabinet/CabinetFormat.h"
#include "base/LittleEndian.h"

#include <algorithm>
#include <new>
#include <zlib.h>

namespace cabinet {
namespace {

constexpr int kLevel = 5; // quicker than the usual; history gains more than it costs
/// How hard the compressor looks for matches. Larger numbers gain little and take much longer.
constexpr int kGoodLength = 4;
constexpr int kLazyLength = 8;
constexpr int kNiceLength = 16;
constexpr int kLongestChain = 12;
constexpr int kRawDeflate = -15;
constexpr int kMemoryLevel = 8;

constexpr std::size_t kMarkSize = 2; // "CK"
constexpr std::size_t kStoredHeader = 5;
/// Most bytes that the format allows beyond the raw size, the signature included.
constexpr std::size_t kMostGrowth = 12;
static_assert(kMarkSize + kStoredHeader <= kMostGrowth, "a block that cannot be compressed can be stored");
/// The compressor stores bytes that it cannot compress, sometimes in several pieces with a header each.
constexpr std::size_t kMostOverhead = 256;

/// RFC 1951, 3.2.6: the last block of a stream, fixed codes, and nothing but the end of the block.
constexpr int kEmptyFinalBlock = 0b0000000'01'1;
constexpr int kEmptyFinalBits = 10;

/// RFC 1951, 3.2.4: one final stored block.
std::size_t Store(std::span<const std::uint8_t> raw, std::uint8_t* out) {
    const auto size = static_cast<std::uint16_t>(raw.size());
    out[0] = 1;
    base::StoreLittle16(out + 1, size);
    base::StoreLittle16(out + 3, static_cast<std::uint16_t>(~size));
    std::ranges::copy(raw, out + kStoredHeader);
    return kStoredHeader + raw.size();
}

} // namespace

struct BlockCompressor::Stream : z_stream {};

BlockCompressor::BlockCompressor() : stream_(std::make_unique<Stream>()) {
    if (deflateInit2(stream_.get(), kLevel, Z_DEFLATED, kRawDeflate, kMemoryLevel, Z_DEFAULT_STRATEGY) !=
        Z_OK)
        throw std::bad_alloc();
}

BlockCompressor::~BlockCompressor() {
    deflateEnd(stream_.get());
}

std::size_t BlockCompressor::LargestResult() {
    return kDataSize + kMarkSize + kBlockSize + kMostOverhead;
}

void BlockCompressor::Begin(std::span<const std::uint8_t> history) {
    deflateReset(stream_.get());
    deflateTune(stream_.get(), kGoodLength, kLazyLength, kNiceLength, kLongestChain);
    if (!history.empty())
        deflateSetDictionary(stream_.get(), history.data(), static_cast<uInt>(history.size()));
}

/// Ends the Deflate stream of a block without losing the compressor's history for the next one. The
/// compressor's own stream goes on; what is written between two blocks is an empty final block (RFC 1951,
/// 3.2.6), filled up to a whole byte.
void BlockCompressor::EndBlock() {
    unsigned pending = 0;
    int bits = 0;
    deflatePending(stream_.get(), &pending, &bits);
    deflatePrime(stream_.get(), kEmptyFinalBits, kEmptyFinalBlock);
    if (const int over = (bits + kEmptyFinalBits) % 8; over != 0)
        deflatePrime(stream_.get(), 8 - over, 0);
    deflate(stream_.get(), Z_NO_FLUSH); // only hands over what was put in
}

std::size_t BlockCompressor::Compress(std::span<const std::uint8_t> raw, std::uint8_t* out) {
    std::uint8_t* const data = out + kDataSize;
    data[0] = 'C';
    data[1] = 'K';
    std::uint8_t* const packed = data + kMarkSize;
    stream_->next_in = const_cast<Bytef*>(raw.data()); // zlib does not write there
    stream_->avail_in = static_cast<uInt>(raw.size());
    stream_->next_out = packed;
    stream_->avail_out = static_cast<uInt>(kBlockSize + kMostOverhead);
    deflate(stream_.get(), Z_BLOCK);
    EndBlock();
    auto packedSize = static_cast<std::size_t>(stream_->next_out - packed);
    if (packedSize > raw.size() + kStoredHeader)
        packedSize = Store(raw, packed);

    const std::size_t storedSize = kMarkSize + packedSize;
    base::StoreLittle16(out + 4, static_cast<std::uint16_t>(storedSize));
    base::StoreLittle16(out + 6, static_cast<std::uint16_t>(raw.size()));
    base::StoreLittle32(out, BlockChecksum({data, storedSize}, out + 4));
    return kDataSize + storedSize;
}

} // namespace cabinet
