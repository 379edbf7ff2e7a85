#include "platform/RarLibrary.h"

#include "RarAdaptor.h"

namespace platform {

RarLibrary& TheRarLibrary() {
    static rar::RarAdaptor adaptor;
    return adaptor;
}

} // namespace platform
