#include "ProbeCab.h"

#include "DateText.h"
#include "archive/cabinet/CabCompress.h"
#include "archive/cabinet/CabFile.h"
#include "base/Letters.h"
#include "platform/Files.h"
#include "platform/HostPath.h"

#include <algorithm>
#include <set>

namespace tools {

namespace {

struct CabRow {
    std::string name;
    std::string folder;
    std::uint32_t size;
    platform::SystemTime modified;
};

/// The rows that the cabinet dialog would show.
cabinet::CabResult Rows(cabinet::CabFile& cabinet, const ProbeCommand& command, std::vector<CabRow>& rows) {
    cabinet.CabName = platform::PathFromHost(command.archive);
    cabinet.FileFound = [&](const std::string& name, const std::string& folder, std::uint32_t size,
                            const platform::SystemTime& time) {
        rows.push_back({name, folder, size, time});
    };
    return cabinet.GetInfo("");
}

void WriteStatus(JsonWriter& json, const cabinet::CabResult& result) {
    json.Key("status").Value(result.number).Key("error").Value(result.description);
}

bool IsWanted(const ProbeCommand& command, std::size_t index) {
    return !command.entries || std::ranges::count(*command.entries, static_cast<std::int32_t>(index)) > 0;
}

} // namespace

void ListCab(const ProbeCommand& command, JsonWriter& json) {
    cabinet::CabFile cabinet;
    std::vector<CabRow> rows;
    const cabinet::CabResult result = Rows(cabinet, command, rows);
    json.OpenObject();
    WriteStatus(json, result);
    json.Key("entries").OpenArray();
    for (std::size_t i = 0; i < rows.size(); ++i) {
        json.OpenObject().Key("index").Value(static_cast<std::int64_t>(i + 1));
        json.Key("name").Value(rows[i].name).Key("folder").Value(rows[i].folder);
        json.Key("size").Value(rows[i].size).Key("modified").Value(DateText(rows[i].modified)).CloseObject();
    }
    json.CloseArray().Key("messages").OpenArray().CloseArray().CloseObject();
}

void ExtractCab(const ProbeCommand& command, JsonWriter& json) {
    cabinet::CabFile cabinet;
    std::vector<CabRow> rows;
    cabinet::CabResult result = Rows(cabinet, command, rows);
    const std::string folder = platform::PathFromHost(command.folder);
    std::set<std::string> extracted; // one call extracts all files of a name
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const std::string name = rows[i].folder + rows[i].name;
        if (!IsWanted(command, i + 1) || !extracted.insert(base::ToUpper(name)).second)
            continue;
        const cabinet::CabResult one = cabinet.Extract(name, folder, cabinet.CabName);
        if (result && !one)
            result = one;
    }
    json.OpenObject();
    WriteStatus(json, result);
    json.Key("messages").OpenArray().CloseArray().CloseObject();
}

void PackCab(const ProbeCommand& command, JsonWriter& json) {
    const std::string source = platform::PathFromHost(command.archive);
    const std::string name = source.substr(source.find_last_of('\\') + 1) + ".cab";
    std::string destination = platform::PathFromHost(command.folder);
    if (!destination.ends_with('\\'))
        destination += '\\';
    const bool isFolder = platform::FolderExists(source);
    std::int16_t status = 0;
    const cabinet::CabReport report =
        cabinet::CabCompress(isFolder ? cabinet::kCabModeFolder : cabinet::kCabModeFile, destination, name,
                             isFolder ? source + '\\' : source, status);
    json.OpenObject().Key("status").Value(status).Key("error").Value(report.Description()).CloseObject();
}

} // namespace tools
