#include "archive/cabinet/CabErrors.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace cabinet {

namespace {

struct NumberedText {
    std::uint32_t number;
    std::string_view text;
};

constexpr std::string_view kUnknown = "Unknown error.";

constexpr std::array kSystemTexts = std::to_array<NumberedText>({
    {2, "The system cannot find the file specified."},
    {3, "The system cannot find the path specified."},
    {4, "The system cannot open the file."},
    {5, "Access is denied."},
    {8, "Not enough storage is available to process this command."},
    {13, "Invalid data."},
    {14, "Not enough storage is available to complete this operation."},
    {15, "The system cannot find the drive specified."},
    {19, "The media is write protected."},
    {20, "The system cannot find the device specified."},
    {21, "The device is not ready."},
    {23, "Data error (cyclic redundancy check)."},
    {25, "The drive cannot locate a specific area or track on the disk."},
    {26, "The specified disk or diskette cannot be accessed."},
    {27, "The drive cannot find the sector requested."},
    {29, "The system cannot write to the specified device."},
    {30, "The system cannot read from the specified device."},
    {31, "A device attached to the system is not functioning."},
    {32, "The process cannot access the file because it is being used by another process."},
    {33, "The process cannot access the file because another process has locked a portion of the file."},
    {39, "The disk is full."},
    {82, "The directory or file cannot be created."},
    {111, "The file name is too long."},
    {112, "There is not enough space on the disk."},
    {123, "The filename, directory name, or volume label syntax is incorrect."},
});

} // namespace

std::string CabErrorText(std::uint32_t number) {
    const auto found = std::ranges::find(kSystemTexts, number, &NumberedText::number);
    return std::string(found == kSystemTexts.end() ? kUnknown : found->text);
}

std::string CabObjectErrorText(std::uint32_t number) {
    return number == kCabErrorNoName
               ? "You must set the CabName property before taking any action on the CabFile object."
               : std::string(kUnknown);
}

} // namespace cabinet
