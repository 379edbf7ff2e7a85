#pragma once

#include "platform/FileOperations.h"
#include "support/TestDir.h"

#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace tests {

/// Keeps what it is told, and stops the operation where the test wants.
class Watcher : public base::WorkObserver {
  public:
    std::function<bool(const std::string& path)> goOn = [](const std::string&) { return true; };
    std::vector<std::pair<std::string, std::uint32_t>> failures;
    std::uint64_t entries = 0;
    std::uint64_t bytes = 0;

    bool Proceed(const base::WorkStep& step) override {
        entries += step.entries;
        bytes += step.bytes;
        return goOn(std::string(step.path));
    }

    void Failed(const std::string& path, base::SystemError error) override {
        failures.emplace_back(path, error.code);
    }
};

using Failures = std::vector<std::pair<std::string, std::uint32_t>>;

class FileOperations : public testing::Test {
  protected:
    base::Outcome Copy(const std::string& from, const std::string& toFolder) {
        watcher_ = {};
        return platform::CopyTree(TestDir::Path(from), TestDir::Path(toFolder), watcher_);
    }

    base::Outcome Delete(const std::string& path) {
        watcher_ = {};
        return platform::DeleteTree(TestDir::Path(path), watcher_);
    }

    std::uint32_t Rename(const std::string& from, const std::string& to) {
        return platform::RenameEntry(TestDir::Path(from), TestDir::Path(to)).code;
    }

    /// No temporary file is left in the folder.
    bool IsClean(const std::string& relative) const {
        for (const auto& entry : std::filesystem::directory_iterator(dir_.Host(relative)))
            if (entry.path().extension() == ".tmp")
                return false;
        return true;
    }

    TestDir dir_;
    Watcher watcher_;
};

} // namespace tests
