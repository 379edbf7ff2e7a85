#include "base/LegacyCharset.h"

namespace base {

int CodePageOfCharset(int charset) {
    switch (charset) {
    case 128: // Japanese
        return 932;
    case 129: // Korean
        return 949;
    case 134: // simplified Chinese
        return 936;
    case 136: // traditional Chinese
        return 950;
    case 161: // Greek
        return 1253;
    case 162: // Turkish
        return 1254;
    case 163: // Vietnamese
        return 1258;
    case 177: // Hebrew
        return 1255;
    case 178: // Arabic
        return 1256;
    case 186: // Baltic
        return 1257;
    case 204: // Cyrillic
        return 1251;
    case 222: // Thai
        return 874;
    case 238: // Central European
        return 1250;
    default:
        return 1252;
    }
}

} // namespace base
