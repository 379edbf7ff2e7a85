#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>
#include <span>
#include <vector>

#ifndef _WIN32
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace support {

/// Bytes between two pages that must not be touched: one step past the end, or before the page that they
/// start in, ends the process. On a system without mmap, bytes of exact size on the heap for a sanitizer to
/// watch.
class GuardedMemory {
  public:
#ifndef _WIN32
    explicit GuardedMemory(std::size_t size) {
        const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
        const std::size_t inner = (size + page - 1) / page * page;
        mappedSize_ = inner + 2 * page;
        void* mapped = mmap(nullptr, mappedSize_, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (mapped == MAP_FAILED)
            throw std::bad_alloc();
        mapped_ = static_cast<std::uint8_t*>(mapped);
        if (inner != 0 && mprotect(mapped_ + page, inner, PROT_READ | PROT_WRITE) != 0)
            throw std::bad_alloc();
        bytes_ = {mapped_ + page + inner - size, size};
    }

    ~GuardedMemory() {
        munmap(mapped_, mappedSize_);
    }
#else
    explicit GuardedMemory(std::size_t size) : storage_(size), bytes_(storage_) {}
#endif

    explicit GuardedMemory(std::span<const std::uint8_t> content) : GuardedMemory(content.size()) {
        if (!content.empty())
            std::memcpy(bytes_.data(), content.data(), content.size());
    }

    GuardedMemory(const GuardedMemory&) = delete;
    GuardedMemory& operator=(const GuardedMemory&) = delete;

    std::span<std::uint8_t> Bytes() const {
        return bytes_;
    }

  private:
#ifndef _WIN32
    std::uint8_t* mapped_ = nullptr;
    std::size_t mappedSize_ = 0;
#else
    std::vector<std::uint8_t> storage_;
#endif
    std::span<std::uint8_t> bytes_;
};

} // namespace support
