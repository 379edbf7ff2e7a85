#include "FuzzSupport.h"
#include "archive/codec/Crc32.h"
#include "archive/codec/Inflate.h"
#include "archive/codec/TraditionalDecryption.h"

/// An encrypted entry from its header to its check: two bytes of recorded size, then the stored bytes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    const std::size_t recorded = input.Number16();
    codec::ByteBuffer buffer = fuzz::BufferOf(input.Rest());
    if (buffer.Size() < 12)
        return 0;
    codec::Cls_Encrypt encrypt;
    encrypt.ZipPrepareKey(buffer.Span(), "fuzz");
    buffer.DropFront(12);
    encrypt.ZipDecryptArray(buffer.Span());
    codec::Inflate(buffer, static_cast<std::int32_t>(recorded) - 1, false);
    codec::Cls_CRC32 whole;
    codec::Cls_CRC32 single;
    single.ResetCRC32();
    for (const std::uint8_t byte : buffer.Span())
        single.CalcCRC32Byte(byte);
    fuzz::Check(whole.CalcCRC32File(buffer.Span()) == single.CRC32());
    return 0;
}
