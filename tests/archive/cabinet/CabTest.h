#pragma once

#include "archive/cabinet/CabFile.h"
#include "support/CabBuilder.h"
#include "support/TestDir.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tests {

/// A CabFile on drive E: of a test folder that notes its events.
class CabTest : public testing::Test {
  protected:
    CabTest() {
        cab.FileFound = [this](const std::string& name, const std::string& folder, std::uint32_t size,
                               const platform::SystemTime& time) {
            found.push_back(folder + "|" + name + "|" + std::to_string(size));
            times.push_back(time);
        };
        cab.BeforeExtract = [this](const std::string& name, bool& cancel) {
            before.push_back(name);
            cancel = name == cancelled;
        };
        cab.AfterExtract = [this](const std::string& path) { after.push_back(path); };
    }

    void Use(const CabBuilder& builder) { UseBytes(builder.Bytes()); }

    void UseItems(std::vector<CabItem> items) {
        CabBuilder builder;
        builder.items = std::move(items);
        Use(builder);
    }

    void UseBytes(const std::string& bytes) { cab.CabName = dir.MakeFile("data.cab", bytes); }

    cabinet::CabResult ExtractAll() { return cab.Extract("", TestDir::Path("out"), cab.CabName); }

    cabinet::CabResult ExtractOne(const std::string& name) {
        return cab.Extract(name, TestDir::Path("out"), cab.CabName);
    }

    using Texts = std::vector<std::string>;

    TestDir dir;
    cabinet::CabFile cab;
    Texts found;
    std::vector<platform::SystemTime> times;
    Texts before;
    Texts after;
    std::string cancelled;
};

} // namespace tests
