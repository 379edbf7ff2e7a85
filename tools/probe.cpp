// The engine without windows: lists, extracts or makes one archive through the classes that the windows use
// and prints their results as JSON.

#include "CrcText.h"
#include "DateText.h"
#include "JsonWriter.h"
#include "ProbeCab.h"
#include "ProbeCommand.h"
#include "ProbeMessages.h"
#include "ProbeRar.h"
#include "app/Messages.h"
#include "archive/zip/ArchiveFront.h"
#include "platform/Files.h"
#include "platform/HostPath.h"

#include <cstdint>
#include <cstdio>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

namespace {

constexpr int kWrongUsage = 2;

void WriteEntry(tools::JsonWriter& json, const zip::Cls_GetFileType& front, std::int32_t entry) {
    json.OpenObject()
        .Key("index")
        .Value(entry)
        .Key("name")
        .Value(front.FileName(entry))
        .Key("folder")
        .Value("")
        .Key("dir")
        .Flag(front.IsDir(entry))
        .Key("size")
        .Value(front.UnCompressed_Size(entry))
        .Key("packed")
        .Value(front.Compressed_Size(entry))
        .Key("crc")
        .Value(tools::CrcText(front.CRC32(entry)))
        .Key("method")
        .Value(front.Method(entry))
        .Key("encrypted")
        .Flag(front.Encrypted(entry))
        .Key("modified")
        .Value(tools::DateText(front.FileDateTime(entry)))
        .CloseObject();
}

/// The entries that the command names, or all of them.
zip::EntrySelection Selection(const tools::ProbeCommand& command, std::int32_t count) {
    zip::EntrySelection selection(static_cast<std::size_t>(count) + 1, !command.entries);
    if (command.entries)
        for (const std::int32_t entry : *command.entries)
            if (entry <= count)
                selection[static_cast<std::size_t>(entry)] = true;
    return selection;
}

void ListZip(const tools::ProbeCommand& command, const tools::ProbeMessages& messages,
             tools::JsonWriter& json) {
    zip::Cls_GetFileType front;
    json.OpenObject().Key("status").Value(front.Get_Contents(platform::PathFromHost(command.archive)));
    json.Key("comment").Value(front.CommentsPack()).Key("entries").OpenArray();
    for (std::int32_t entry = 1; entry <= front.FileCount(); ++entry)
        WriteEntry(json, front, entry);
    json.CloseArray();
    messages.Write(json);
    json.CloseObject();
}

/// Makes a folder of the host with its missing parents, in the letter case given.
void MakeFolder(const std::string& path) {
    if (platform::FolderExists(path))
        return;
    if (const std::size_t end = path.find_last_of('\\'); end != path.npos)
        MakeFolder(path.substr(0, end));
    platform::CreateFolder(path);
}

void ExtractZip(const tools::ProbeCommand& command, const tools::ProbeMessages& messages,
                tools::JsonWriter& json) {
    zip::Cls_GetFileType front;
    std::int16_t status = front.Get_Contents(platform::PathFromHost(command.archive));
    const std::string folder = platform::PathFromHost(command.folder);
    MakeFolder(folder);
    if (status == zip::kStatusDone)
        status = front.UnPack(Selection(command, front.FileCount()), folder);
    json.OpenObject().Key("status").Value(status);
    messages.Write(json);
    json.CloseObject();
}

int Fail(const std::string& fault) {
    std::fprintf(stderr,
                 "probe: %s\n"
                 "usage: probe list ARCHIVE [--format zip|cab|rar]\n"
                 "       probe test ARCHIVE [--format rar]\n"
                 "       probe extract ARCHIVE FOLDER [--password P] [--entries 1,3] [--format zip|cab|rar]\n"
                 "       probe pack SOURCE FOLDER\n"
                 "       probe batch    (these, a line of input each, with tabs between the words)\n",
                 fault.c_str());
    return kWrongUsage;
}

int Run(const std::vector<std::string>& arguments) {
    std::string fault;
    const auto command = tools::ParseProbeCommand(arguments, fault);
    if (!command)
        return Fail(fault);
    const bool isPack = command->verb == tools::ProbeVerb::kPack;
    const bool isCab = command->format == "cab" || isPack;
    tools::ProbeMessages messages(command->password);
    app::SetMessages(&messages);
    tools::JsonWriter json(stdout);
    const bool isList = command->verb == tools::ProbeVerb::kList;
    if (isPack)
        tools::PackCab(*command, json);
    else if (isCab)
        isList ? tools::ListCab(*command, json) : tools::ExtractCab(*command, json);
    else if (command->verb == tools::ProbeVerb::kTest)
        tools::TestRar(*command, json);
    else if (command->format == "rar")
        isList ? tools::ListRar(*command, messages, json) : tools::ExtractRar(*command, messages, json);
    else
        isList ? ListZip(*command, messages, json) : ExtractZip(*command, messages, json);
    app::SetMessages(nullptr);
    json.Finish();
    return 0;
}

/// One process for many archives: where programs start slowly.
int RunBatch() {
    for (std::string line; std::getline(std::cin, line);) {
        std::vector<std::string> arguments;
        std::istringstream words(line);
        for (std::string word; std::getline(words, word, '\t');)
            arguments.push_back(word);
        if (const int result = Run(arguments); result != 0)
            return result;
    }
    return 0;
}

} // namespace

int main(int count, char** values) {
    const std::vector<std::string> arguments(values + 1, values + count);
    return arguments == std::vector<std::string>{"batch"} ? RunBatch() : Run(arguments);
}
