#include "platform/Process.h"

namespace platform {

std::string ProgramString(std::uint32_t id) {
    switch (id) {
    case 998:
        return "Pellarion";
    case 1000:
        return "https://pellarion.example/support";
    default:
        return "";
    }
}

} // namespace platform
