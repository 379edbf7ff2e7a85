#include "ProbeRar.h"

#include "CrcText.h"
#include "DateText.h"
#include "archive/codec/Crc32.h"
#include "archive/rar/RarOperations.h"
#include "platform/HostPath.h"

#include <algorithm>

namespace tools {

namespace {

/// Writes the rows that the RAR dialog would show.
class Rows final : public rar::RarListObserver {
  public:
    explicit Rows(JsonWriter& json) : json_(json) {}

    std::string TimeText(const platform::SystemTime& local) override { return DateText(local); }

    void RarFileFound(const rar::RarFile& file) override {
        json_.OpenObject().Key("index").Value(file.entry).Key("name").Value(file.name);
        json_.Key("size").Value(static_cast<std::int64_t>(file.size));
        json_.Key("modified").Value(rar::RarArchiveTimeText()).CloseObject();
    }

  private:
    JsonWriter& json_;
};

/// Counts the entries that are written.
class Counter final : public rar::RarExtractionObserver {
  public:
    std::int32_t written = 0;

    bool Proceed(const base::WorkStep&) override { return true; }

    void EntryWritten(std::int32_t) override { ++written; }
};

} // namespace

void ListRar(const ProbeCommand& command, const ProbeMessages& messages, JsonWriter& json) {
    json.OpenObject().Key("entries").OpenArray();
    Rows rows(json);
    const auto listing = rar::ListRarArchive(platform::PathFromHost(command.archive), "", rows);
    json.CloseArray().Key("status").Value(listing == base::Outcome::kDone ? 0 : 1);
    messages.Write(json);
    json.CloseObject();
}

void TestRar(const ProbeCommand& command, JsonWriter& json) {
    rar::RAROpenArchiveData data;
    data.ArcName = platform::PathFromHost(command.archive);
    data.OpenMode = rar::kRarOpenExtract;
    const auto archive = rar::TheRarLibrary().RAROpenArchive(data);
    json.OpenObject().Key("entries").OpenArray();
    rar::RARHeaderData header;
    int status = data.OpenResult;
    while (archive && (status = archive->RARReadHeader(header)) == rar::kRarSuccess) {
        codec::Cls_CRC32 crc;
        crc.ResetCRC32();
        archive->RARSetCallback([&](std::span<const std::uint8_t> piece) {
            crc.CalcCRC32Block(piece);
            return true;
        });
        const int result = archive->RARProcessFile(rar::kRarTest, "", "", nullptr);
        json.OpenObject().Key("name").Value(header.FileName).Key("result").Value(result);
        json.Key("crc").Value(CrcText(static_cast<std::int32_t>(crc.CRC32()))).CloseObject();
    }
    json.CloseArray().Key("status").Value(status).CloseObject();
}

void ExtractRar(const ProbeCommand& command, const ProbeMessages& messages, JsonWriter& json) {
    rar::RarFilter filter;
    if (command.entries)
        filter = [&](std::int32_t entry, const std::string&) {
            return std::ranges::count(*command.entries, entry) > 0;
        };
    Counter observer;
    const base::Outcome outcome = rar::ExtractRarArchive(platform::PathFromHost(command.folder) + '\\',
                                                         platform::PathFromHost(command.archive),
                                                         command.password.value_or(""), observer, filter);
    json.OpenObject().Key("status").Value(outcome == base::Outcome::kDone ? 0 : 1);
    json.Key("written").Value(observer.written);
    messages.Write(json);
    json.CloseObject();
}

} // namespace tools
