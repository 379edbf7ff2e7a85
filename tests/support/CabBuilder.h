#pragma once

#include "support/Records.h"
#include "support/SampleText.h"

#include <algorithm>
#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace tests {

/// A file of a cabinet to be made.
struct CabItem {
    std::string name; ///< as stored
    std::string content = {};
    int folder = 0;
    int attributes = 0x20;
    int date = 0x5A21; // 2025-01-01
    int time = 0x6000; // 12:00:00
};

/// Makes cabinets record by record, good ones and bad ones.
class CabBuilder {
  public:
    std::vector<CabItem> items;
    std::set<int> stored; ///< folders that are not compressed
    std::string headerReserve;
    std::string folderReserve;
    std::string dataReserve;
    std::string nextCabinet; ///< makes the cabinet one of a set
    bool withChecksums = true;

    std::string Bytes() const {
        int folderCount = 1;
        for (const CabItem& item : items)
            folderCount = std::max(folderCount, item.folder < 0xFFFD ? item.folder + 1 : 1);
        std::string head = Header(folderCount);
        std::string files;
        std::vector<std::string> raw(static_cast<std::size_t>(folderCount));
        for (const CabItem& item : items) {
            std::string& data =
                raw[item.folder < 0xFFFD ? static_cast<std::size_t>(item.folder) : raw.size() - 1];
            files += Number(item.content.size(), 4) + Number(data.size(), 4) +
                     Number(static_cast<std::size_t>(item.folder), 2) +
                     Number(static_cast<std::size_t>(item.date), 2) +
                     Number(static_cast<std::size_t>(item.time), 2) +
                     Number(static_cast<std::size_t>(item.attributes), 2) + item.name + '\0';
            data += item.content;
        }
        const std::size_t filesAt = head.size() + raw.size() * (8 + folderReserve.size());
        std::size_t dataAt = filesAt + files.size();
        std::string folders;
        std::string data;
        for (int i = 0; i < folderCount; ++i) {
            const bool isStored = stored.contains(i);
            std::size_t blocks = 0;
            const std::string packed = Blocks(raw[static_cast<std::size_t>(i)], isStored, blocks);
            folders += Number(dataAt + data.size(), 4) + Number(blocks, 2) + Number(isStored ? 0 : 1, 2) +
                       folderReserve;
            data += packed;
        }
        head.replace(16, 4, Number(filesAt, 4));
        std::string all = head + folders + files + data;
        all.replace(8, 4, Number(all.size(), 4));
        return all;
    }

  private:
    std::string Header(int folderCount) const {
        const bool reserve = !headerReserve.empty() || !folderReserve.empty() || !dataReserve.empty();
        const std::size_t flags = (nextCabinet.empty() ? 0u : 2u) | (reserve ? 4u : 0u);
        std::string head = "MSCF" + std::string(20, '\0') + "\x03\x01" +
                           Number(static_cast<std::size_t>(folderCount), 2) + Number(items.size(), 2) +
                           Number(flags, 2) + Number(7, 2) + Number(0, 2);
        if (reserve)
            head += Number(headerReserve.size(), 2) + Number(folderReserve.size(), 1) +
                    Number(dataReserve.size(), 1) + headerReserve;
        if (!nextCabinet.empty())
            head += nextCabinet + '\0' + "disk 2" + '\0';
        return head;
    }

    std::string Blocks(const std::string& raw, bool isStored, std::size_t& count) const {
        std::string all;
        count = 0;
        for (std::size_t at = 0; at < raw.size(); at += 32768, ++count) {
            const std::string block = raw.substr(at, 32768);
            const std::string history = at == 0 ? "" : raw.substr(at - 32768, 32768);
            const std::string packed = isStored ? block : "CK" + Deflated(block, Z_FINISH, history);
            const std::string sizes = Number(packed.size(), 2) + Number(block.size(), 2);
            all += Number(withChecksums ? Checksum(sizes, Checksum(packed, 0)) : 0, 4) + sizes + dataReserve +
                   packed;
        }
        return all;
    }

    /// Word by word, as the format's description has it.
    static std::uint32_t Checksum(const std::string& data, std::uint32_t sum) {
        std::size_t at = 0;
        const auto byte = [&](std::size_t i) {
            return static_cast<std::uint32_t>(static_cast<unsigned char>(data[i]));
        };
        for (; at + 4 <= data.size(); at += 4)
            sum ^= byte(at) | byte(at + 1) << 8 | byte(at + 2) << 16 | byte(at + 3) << 24;
        std::uint32_t rest = 0;
        for (; at < data.size(); ++at)
            rest = rest << 8 | byte(at);
        return sum ^ rest;
    }
};

} // namespace tests
