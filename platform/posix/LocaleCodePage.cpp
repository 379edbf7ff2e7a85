#include "platform/posix/LocaleCodePage.h"

#include "base/Letters.h"
#include "platform/CodePage.h"
#include "platform/CodePageText.h"

#include <clocale>
#include <cstdlib>
#include <langinfo.h>
#include <string>

namespace platform {
namespace {

struct NamedPage {
    const char* codeset;
    int codePage;
};

/// Codesets of Unix locales beside the Windows code page of the same bytes. Any other codeset counts as
/// UTF-8.
constexpr NamedPage kPages[] = {
    {"ISO-8859-1", 1252}, {"ISO-8859-2", 28592}, {"ISO-8859-5", 28595}, {"ISO-8859-7", 1253},
    {"ISO-8859-8", 1255}, {"ISO-8859-9", 1254},  {"ISO-8859-13", 1257}, {"ISO-8859-15", 28605},
    {"SHIFT_JIS", 932},   {"SJIS", 932},         {"GB2312", 936},       {"GBK", 936},
    {"EUC-KR", 949},      {"EUCKR", 949},        {"BIG5", 950},         {"TIS-620", 874},
    {"KOI8-R", 20866},    {"KOI8-U", 21866},
};

int PageOfCodeset(const std::string& codeset) {
    if (base::StartsWithNoCase(codeset, "CP"))
        return std::atoi(codeset.c_str() + 2);
    for (const NamedPage& page : kPages) {
        if (base::EqualsNoCase(codeset, page.codeset))
            return page.codePage;
    }
    return kUtf8CodePage;
}

int ReadLocaleCodePage() {
    const locale_t locale = newlocale(LC_CTYPE_MASK, "", nullptr);
    if (locale == nullptr)
        return kUtf8CodePage;
    const int page = PageOfCodeset(nl_langinfo_l(CODESET, locale));
    freelocale(locale);
    return page;
}

} // namespace

int LocaleCodePage() {
    static const int page = ReadLocaleCodePage();
    return page;
}

int AnsiCodePage() {
    const char* wanted = std::getenv("PELLARION_ANSI_CODEPAGE");
    const int number = wanted == nullptr ? 0 : std::atoi(wanted);
    return number > 0 ? number : LocaleCodePage();
}

} // namespace platform
