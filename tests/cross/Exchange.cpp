// Writes or reads the files that the programs of both systems share on one drive:
//   exchange write|read FOLDER

#include "app/IniFile.h"
#include "platform/HostPath.h"
#include "ui/explorer/tree/FolderMarks.h"

#include <cstdio>
#include <string>

namespace {

constexpr const char* kSettings[][3] = {{"Setting", "Language", "0407"},
                                        {"Setting", "Charset", "0"},
                                        {"Grid", "ColWidth0", "1800.00"},
                                        {"Größe", "Höhe", "12 315 ü"},
                                        {"Setting", "Language", "0409"}};
constexpr const char* kMarks[] = {"\\Docs\\Work", "\\Größe", "E:\\", "\\gone"};

void Write(const std::string& folder) {
    for (const auto& [section, key, value] : kSettings)
        app::WriteIni(section, key, value, folder + "\\setting.ini");
    const ui::FolderMarks marks(folder);
    for (const char* mark : kMarks)
        marks.AddMark(mark);
    marks.RemoveMark("\\GONE");
}

void Read(const std::string& folder) {
    for (const auto& [section, key, value] : kSettings)
        std::printf("%s\n", app::ReadIni(section, key, "(none)", folder + "\\setting.ini").c_str());
    const ui::MarkSet marks = ui::FolderMarks(folder).Read();
    for (const char* path : {"F:\\DOCS\\work", "F:\\GRÖßE", "E:\\", "F:\\", "F:\\gone"})
        std::printf("%s\n", marks.IsMarked(path) ? "marked" : "not marked");
}

} // namespace

int main(int count, char** values) {
    if (count != 3)
        return 2;
    const std::string folder = platform::PathFromHost(values[2]);
    std::string(values[1]) == "write" ? Write(folder) : Read(folder);
    return 0;
}
