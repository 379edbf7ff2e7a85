// Asks of any bytes whether they are a name that stays inside the target, and checks a yes by another road.

#include "base/OutputPathRule.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string name(reinterpret_cast<const char*>(data), size);
    if (!base::StaysInTarget(name))
        return 0;
    std::ranges::replace(name, '\\', '/');
    const auto path = (std::filesystem::path("/target") / name).lexically_normal();
    if (!path.string().starts_with("/target/") || name.find(':') != name.npos || name.find('\0') != name.npos)
        std::abort();
    for (const auto& part : path)
        if (part == ".." || part.string().ends_with(' ') || (part.string().ends_with('.') && part != "."))
            std::abort();
    return 0;
}
