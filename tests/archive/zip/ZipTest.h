#pragma once

#include "archive/zip/ArchiveFront.h"
#include "base/WorkObserver.h"
#include "fakes/RecordingMessages.h"
#include "support/TestDir.h"
#include "support/ZipBuilder.h"

#include <cstdint>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tests {

using Ids = std::vector<std::uint32_t>;

/// Counts the entries that are done, and lets `go` decide whether to go on.
class CountingObserver final : public base::WorkObserver {
  public:
    explicit CountingObserver(std::function<bool(std::int32_t)> go = [](std::int32_t) { return true; })
        : go_(std::move(go)) {}

    bool Proceed(const base::WorkStep& step) override {
        last += static_cast<std::int32_t>(step.entries);
        return step.entries == 0 || go_(last);
    }

    std::int32_t last = 0;

  private:
    std::function<bool(std::int32_t)> go_;
};

/// An archive front on drive E: of a test folder, with recorded messages.
class ZipTest : public testing::Test {
  protected:
    std::int16_t Load(const std::string& bytes) { return front.Get_Contents(dir.MakeFile("a.zip", bytes)); }

    std::int16_t Load(std::vector<ZipEntry> entries) {
        ZipBuilder zip;
        zip.entries = std::move(entries);
        return Load(zip.Bytes());
    }

    zip::EntrySelection All() const {
        return zip::EntrySelection(static_cast<std::size_t>(front.FileCount()) + 1, true);
    }

    /// Extracts everything to E:\out, which exists.
    std::int16_t UnPackAll(base::WorkObserver* observer = nullptr) {
        return front.UnPack(All(), dir.MakeFolder("out"), observer);
    }

    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (std::int32_t entry = 1; entry <= front.FileCount(); ++entry)
            names.push_back(front.FileName(entry));
        return names;
    }

    /// Names of everything below E:\out, sorted, "/" between folders.
    std::vector<std::string> Written() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(dir.Host("out")))
            names.push_back(entry.path().lexically_relative(dir.Host("out")).generic_string() +
                            (entry.is_directory() ? "/" : ""));
        std::sort(names.begin(), names.end());
        return names;
    }

    TestDir dir;
    fakes::RecordingMessages messages;
    zip::Cls_GetFileType front;
};

} // namespace tests
