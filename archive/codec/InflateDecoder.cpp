#include "archive/codec/InflateDecoder.h"

#include "archive/codec/InflateSymbol.h"
#include "archive/codec/MatchCopy.h"
#include "base/LittleEndian.h"

#include <algorithm>

namespace codec {

namespace {

constexpr std::array<std::uint8_t, kCodeLengthSymbols> kCodeLengthOrder = {16, 17, 18, 0, 8,  7, 9,  6, 10, 5,
                                                                           11, 4,  12, 3, 13, 2, 14, 1, 15};

constexpr std::size_t kMostLitLenCodes = 257 + 31;
constexpr std::size_t kMostDistanceCodes = 1 + 31;
static_assert(kMostLitLenCodes == kLitLenSymbols && kMostDistanceCodes == kDistanceSymbols,
              "every count that five bits can give has its symbols");

/// With at least so many input bytes, building the pair table saves more time than it takes.
constexpr std::size_t kWorthPairs = 256;

constexpr std::int16_t kDamaged = -1;
constexpr std::int16_t kBadStoredLength = -2;

} // namespace

InflateDecoder::InflateDecoder(std::span<const std::uint8_t> input, InflateOutput& output, std::size_t limit,
                               bool deflate64, const InflateKernel& kernel, std::size_t start)
    : bits_(input), output_(output), at_(start), limit_(limit), deflate64_(deflate64), kernel_(kernel) {
    if (start > 0)
        space_ = output_.Grow(start, start);
}

InflateResult InflateDecoder::Decode() {
    // Every round takes at least three bits, and a block header made of missing bits is a stored block that
    // does not fit. So this loop ends with the input at the latest.
    for (;;) {
        const bool final = bits_.GetBits(1) != 0;
        const Outcome outcome = DecodeBlock(bits_.GetBits(2));
        if (outcome == Outcome::kBadTable)
            return {status_, true, taken_ + at_};
        if (outcome == Outcome::kStop || final)
            return {status_, false, taken_ + at_};
    }
}

InflateDecoder::Outcome InflateDecoder::DecodeBlock(unsigned type) {
    switch (type) {
    case 0:
        return CopyStored();
    case 1:
        return DecodeSymbols(FixedTables(deflate64_));
    case 2:
        if (!ReadDynamicTables())
            return Outcome::kBadTable;
        return DecodeSymbols(tables_);
    default:
        status_ = kDamaged;
        return Outcome::kStop;
    }
}

InflateDecoder::Outcome InflateDecoder::CopyStored() {
    const auto size = static_cast<std::size_t>(bits_.end - bits_.begin);
    std::size_t position = bits_.BytePosition();
    // The length fields must not be the last bytes of the input, so an empty stored block at its end returns
    // -1. Nothing is lost by that: everything before it has been decoded. The position compared is that of
    // the fields themselves. Counted from the bytes already in a bit buffer, a good last block of one or two
    // bytes would be refused, too.
    if (position + 4 >= size) {
        status_ = kDamaged;
        return Outcome::kStop;
    }
    const std::size_t length = base::LoadLittle16(bits_.begin + position);
    const std::size_t complement = base::LoadLittle16(bits_.begin + position + 2);
    position += 4;
    if ((length ^ complement) != 0xFFFF)
        status_ = kBadStoredLength;
    if (length > size - position || !MakeRoom(length)) {
        status_ = kDamaged;
        return Outcome::kStop;
    }
    std::copy_n(bits_.begin + position, length, space_.data() + at_);
    at_ += length;
    bits_.Seek(position + length);
    return Outcome::kGoOn;
}

bool InflateDecoder::ReadDynamicTables() {
    const std::size_t litLenCodes = bits_.GetBits(5) + 257;
    const std::size_t distanceCodes = bits_.GetBits(5) + 1;
    const std::size_t codeLengthCodes = bits_.GetBits(4) + 4;

    std::array<std::uint8_t, kCodeLengthSymbols> codeLengthLengths{};
    for (std::size_t i = 0; i < codeLengthCodes; i++)
        codeLengthLengths[kCodeLengthOrder[i]] = static_cast<std::uint8_t>(bits_.GetBits(3));
    std::array<std::uint32_t, 1u << kCodeLengthRootBits> table;
    const unsigned rootBits = BuildCodeLengthTable(table, codeLengthLengths);
    if (rootBits == 0)
        return false;

    std::array<std::uint8_t, kMostLitLenCodes + kMostDistanceCodes> storage;
    const std::span<std::uint8_t> lengths = std::span(storage).first(litLenCodes + distanceCodes);
    return ReadCodeLengths(lengths, table, rootBits) &&
           BuildInflateTables(tables_, lengths.first(litLenCodes), lengths.subspan(litLenCodes), deflate64_,
                              static_cast<std::size_t>(bits_.end - bits_.next) >= kWorthPairs);
}

bool InflateDecoder::ReadCodeLengths(std::span<std::uint8_t> lengths, std::span<const std::uint32_t> table,
                                     unsigned rootBits) {
    for (std::size_t i = 0; i < lengths.size();) {
        bits_.Refill();
        const std::uint32_t entry = table[bits_.buffer & ((1u << rootBits) - 1)];
        bits_.DropBits(entry & 0xFF);
        const std::uint32_t symbol = entry >> 16;
        if (symbol < 16) {
            lengths[i++] = static_cast<std::uint8_t>(symbol);
            continue;
        }
        std::uint8_t value = 0;
        std::size_t repeat = 0;
        if (symbol == 16) {
            if (i == 0)
                return false;
            value = lengths[i - 1];
            repeat = 3 + bits_.GetBits(2);
        } else {
            repeat = symbol == 17 ? 3 + bits_.GetBits(3) : 11 + bits_.GetBits(7);
        }
        if (repeat > lengths.size() - i)
            return false;
        std::fill_n(lengths.begin() + static_cast<std::ptrdiff_t>(i), repeat, value);
        i += repeat;
    }
    return true;
}

InflateDecoder::Outcome InflateDecoder::DecodeSymbols(const InflateTables& tables) {
    for (;;) {
        if (space_.size() - at_ < kFastSpace && space_.size() < limit_)
            MakeRoom(std::min(kFastSpace, limit_ - at_));
        switch (kernel_.decode(bits_, space_.data(), at_, space_.size(), tables)) {
        case FastLoopEnd::kEndOfBlock:
            return Outcome::kGoOn;
        case FastLoopEnd::kTooFar:
            status_ = kDamaged;
            return Outcome::kStop;
        case FastLoopEnd::kMargins:
            break;
        }
        bool endOfBlock = false;
        const Outcome outcome = DecodeOneSymbol(tables, endOfBlock);
        if (endOfBlock || outcome != Outcome::kGoOn)
            return outcome;
    }
}

InflateDecoder::Outcome InflateDecoder::DecodeOneSymbol(const InflateTables& tables, bool& endOfBlock) {
    bits_.Refill();
    const SymbolBits symbol = TakeSymbol(bits_, tables.litLen.data(), tables.litLenRootBits);
    if ((symbol.entry & kEntryLiteral) != 0) {
        if (!MakeRoom(1)) {
            status_ = kDamaged;
            return Outcome::kStop;
        }
        space_[at_++] = static_cast<std::uint8_t>(symbol.entry >> 16);
        return Outcome::kGoOn;
    }
    if ((symbol.entry & kEntryEndOfBlock) != 0) {
        endOfBlock = true;
        return Outcome::kGoOn;
    }
    const std::size_t length = symbol.Value();
    bits_.Refill();
    const std::size_t distance = TakeSymbol(bits_, tables.distance.data(), tables.distanceRootBits).Value();
    // A match of length 0 that is decoded from missing bits alone would repeat for ever.
    if (distance > at_ || !MakeRoom(length) || (length == 0 && bits_.Exhausted())) {
        status_ = kDamaged;
        return Outcome::kStop;
    }
    CopyMatch(space_.data() + at_, distance, length);
    at_ += length;
    return Outcome::kGoOn;
}

bool InflateDecoder::MakeRoom(std::size_t count) {
    if (count > limit_ - at_)
        return false;
    if (count > space_.size() - at_) {
        const std::size_t taken = output_.TakeFront(at_);
        at_ -= taken;
        limit_ -= taken;
        taken_ += taken;
        space_ = output_.Grow(at_, at_ + count);
        // What is beyond the limit is not for the fast loop either.
        space_ = space_.first(std::min(space_.size(), limit_));
    }
    return true;
}

} // namespace codec
