#include "platform/ScratchFile.h"

#include "platform/windows/files/Handle.h"
#include "platform/windows/paths/WidePath.h"

#include <array>
#include <atomic>

namespace platform {
namespace {

class HostScratchFile final : public ScratchFile {
  public:
    explicit HostScratchFile(Handle file) : file_(std::move(file)) {}

    base::SystemError WriteAt(std::uint64_t offset, std::span<const std::uint8_t> data) override {
        return WriteFullyAt(file_, offset, data);
    }

    base::SystemError ReadAt(std::uint64_t offset, std::span<std::uint8_t> buffer) override {
        std::size_t count = 0;
        const base::SystemError error = ReadFullyAt(file_, offset, buffer, count);
        return !error && count < buffer.size() ? base::SystemError{base::kErrorReadFault} : error;
    }

  private:
    Handle file_;
};

} // namespace

std::unique_ptr<ScratchFile> ScratchFile::Create() {
    static std::atomic<unsigned> counter{0};
    std::array<wchar_t, MAX_PATH + 1> folder{};
    if (::GetTempPathW(static_cast<DWORD>(folder.size()), folder.data()) == 0)
        return nullptr;
    const std::wstring name =
        JoinWide(folder.data(), L"pellarion-" + std::to_wstring(::GetCurrentProcessId()) + L"-" +
                                    std::to_wstring(counter++) + L".tmp");
    Handle file(::CreateFileW(name.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                              FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr));
    return file.IsOpen() ? std::make_unique<HostScratchFile>(std::move(file)) : nullptr;
}

} // namespace platform
