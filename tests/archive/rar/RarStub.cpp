// Stands for the RAR library in tests: exports its calls, over records that are laid out here by their
// offsets. An "archive" is a text: a line "open N" makes opening answer N; every other line is an entry, with
// its name, kind (f, d or l for a link), content ("-" for none), and the result of unpacking it, with 100
// added when skipping returns it too; "headers N" ends the headers with N; "close N" makes closing answer N.
// STUB_CALLS says which calls it has: 4, 5, or 7 for the newer ones too.

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#ifdef _WIN32
#define EXPORTED __declspec(dllexport)
#else
#define EXPORTED __attribute__((visibility("default")))
#endif

namespace {

struct Stub {
    std::string path;
    std::vector<std::string> lines;
    std::size_t next = 0;
    std::string password;
    std::string content;
    std::string target;
    int result = 0;
    int closeResult = 0;
    int headersResult = 10;
    int (*callback)(unsigned, std::intptr_t, std::intptr_t, std::intptr_t) = nullptr;
    std::intptr_t user = 0;
};

void Put(void* record, std::size_t offset, std::uint32_t value) {
    std::memcpy(static_cast<char*>(record) + offset, &value, sizeof value);
}

template <typename T>
T Get(const void* record, std::size_t offset) {
    T value;
    std::memcpy(&value, static_cast<const char*>(record) + offset, sizeof value);
    return value;
}

/// Takes the next entry into the stub; its name and kind go to the caller.
bool Next(Stub& stub, std::string& name, std::string& kind) {
    if (stub.next == stub.lines.size())
        return false;
    std::istringstream fields(stub.lines[stub.next++]);
    fields >> name >> kind >> stub.content >> stub.result;
    if (stub.content == "PASSWORD")
        stub.content = stub.password;
    if (stub.content == "-")
        stub.content.clear();
    return true;
}

} // namespace

extern "C" {

EXPORTED void* RAROpenArchive(void* data) {
    auto* stub = new Stub;
    stub->path = Get<const char*>(data, 0);
    Put(data, 12, 0);
    std::ifstream file(stub->path);
    if (!file)
        Put(data, 12, 15);
    for (std::string line; std::getline(file, line);) {
        int number = 0;
        if (std::sscanf(line.c_str(), "open %d", &number) == 1)
            Put(data, 12, static_cast<std::uint32_t>(number));
        else if (std::sscanf(line.c_str(), "headers %d", &number) == 1)
            stub->headersResult = number;
        else if (std::sscanf(line.c_str(), "close %d", &number) == 1)
            stub->closeResult = number;
        else
            stub->lines.push_back(line);
    }
    if (Get<std::uint32_t>(data, 12) == 0)
        return stub;
    delete stub;
    return nullptr;
}

EXPORTED void RARSetPassword(void* handle, char* password) {
    static_cast<Stub*>(handle)->password = password;
}

EXPORTED int RARReadHeader(void* handle, void* record) {
    auto& stub = *static_cast<Stub*>(handle);
    std::string name;
    std::string kind;
    if (!Next(stub, name, kind))
        return stub.headersResult;
    char* bytes = static_cast<char*>(record);
    std::strncpy(bytes, stub.path.c_str(), 260);
    std::memset(bytes + 260, '#', 260); // what stands behind the NUL means nothing
    std::strncpy(bytes + 260, name.c_str(), name.size() + 1);
    Put(record, 520, kind == "d" ? 0xE0 : 0);
    Put(record, 528, static_cast<std::uint32_t>(stub.content.size()));
    Put(record, 532, 3);
    Put(record, 540, 0x2B293C60); // 2001-09-09 07:35:00
    Put(record, 552, kind == "l" ? 0xA1FF : 0x81A4);
    return 0;
}

EXPORTED int RARProcessFile(void* handle, int operation, char* folder, char* name) {
    auto& stub = *static_cast<Stub*>(handle);
    if (operation == 0 || stub.result != 0)
        return operation == 0 && stub.result < 100 ? 0 : stub.result % 100;
    if (stub.callback) {
        const std::size_t half = stub.content.size() / 2;
        for (const auto& [from, size] :
             {std::pair{std::size_t{0}, half}, {half, stub.content.size() - half}}) {
            const auto first = reinterpret_cast<std::intptr_t>(stub.content.data() + from);
            if (stub.callback(1, stub.user, first, static_cast<std::intptr_t>(size)) < 0)
                return 21;
        }
    }
    if (operation == 2 && std::string(name).starts_with(folder))
        std::ofstream(name) << stub.content;
    return 0;
}

#if STUB_CALLS > 4
EXPORTED int RARCloseArchive(void* handle) {
    const int result = static_cast<Stub*>(handle)->closeResult;
    delete static_cast<Stub*>(handle);
    return result;
}
#endif

#if STUB_CALLS == 7

EXPORTED int RARReadHeaderEx(void* handle, void* record) {
    auto& stub = *static_cast<Stub*>(handle);
    std::string name;
    std::string kind;
    if (!Next(stub, name, kind))
        return stub.headersResult;
    constexpr std::size_t kWideName = 2 * 1024 + 1024 * sizeof(wchar_t);
    constexpr std::size_t kNumbers = 2 * 1024 * (1 + sizeof(wchar_t));
    std::strncpy(static_cast<char*>(record), stub.path.c_str(), 1024);
    for (std::size_t i = 0; i < name.size(); ++i) {
        // "~" stands for a character outside the code page.
        const wchar_t wide = name[i] == '~' ? L'\u4E2D' : static_cast<wchar_t>(name[i]);
        std::memcpy(static_cast<char*>(record) + kWideName + i * sizeof wide, &wide, sizeof wide);
    }
    Put(record, kNumbers, kind == "d" ? 0x20 : 0);
    Put(record, kNumbers + 12, static_cast<std::uint32_t>(stub.content.size()));
    Put(record, kNumbers + 16, name == "huge" ? 3 : 0);
    Put(record, kNumbers + 104, kind == "l" ? 1 : 0);
    Put(record, kNumbers + 124, 0x243C1300); // 1999-12-31 23:59:58
    Put(record, kNumbers + 128, 0x01BF53EB);
    return 0;
}

EXPORTED void RARSetCallback(void* handle,
                             int (*callback)(unsigned, std::intptr_t, std::intptr_t, std::intptr_t),
                             std::intptr_t user) {
    static_cast<Stub*>(handle)->callback = callback;
    static_cast<Stub*>(handle)->user = user;
}

#endif
}
