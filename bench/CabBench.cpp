// Packing and unpacking of cabinets through the probe, beside whole programs, and extraction in several
// orders beside extraction at once.

#include "Compare.h"
#include "Peers.h"
#include "RunCommand.h"
#include "Samples.h"
#include "SourceTree.h"
#include "Workplace.h"
#include "archive/cabinet/CabFile.h"
#include "platform/HostPath.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace {

namespace fs = std::filesystem;

using Names = std::vector<std::string>;

const std::string kProbe = PELLARION_PROBE;
constexpr double kAllowedMemory = 64e6;
constexpr std::size_t kLarge = std::size_t{200} << 20;

/// gcab takes the files one by one, without the folder that they are in.
Names GcabWords(const std::string& tree, const std::string& cabinet) {
    return {"sh", "-c",
            "cd '" + tree + "' && rm -f '" + cabinet +
                "' && find * -type f -print0 | xargs -0 -x -n 100000 -s 1900000 gcab -cz '" + cabinet + "'"};
}

void PrintMemory(const std::string& what, std::size_t held) {
    std::printf("%-24s %9.1f MB held\n", ("memory of " + what).c_str(), static_cast<double>(held) / 1e6);
    std::printf("RATIO memory of %s vs 64 MB %.2f\n", what.c_str(),
                kAllowedMemory / static_cast<double>(held));
}

/// Packs memory/`name` with both; leaves the cabinets in memory/"our" and memory/"their".
void ComparePacking(const std::string& what, const bench::Workplace& memory, const std::string& name,
                    std::size_t bytes) {
    const std::string tree = memory / name;
    fs::create_directories(memory / "our");
    fs::create_directories(memory / "their");
    const std::string theirs = memory / ("their/" + name + ".cab");
    const std::string ours = memory / ("our/" + name + ".cab");
    const Names pack{kProbe, "pack", tree, memory / "our"};
    bench::Side gcab = bench::ProgramSide("gcab", GcabWords(tree, theirs));
    bench::Compare("packing " + what, bytes, bench::ProgramSide("probe", pack), gcab);
    PrintMemory("packing " + what, bench::MemoryOf(pack));
    const auto ourSize = static_cast<double>(fs::file_size(ours));
    const auto theirSize = static_cast<double>(fs::file_size(theirs));
    std::printf("%-24s %9.1f MB ours      %9.1f MB gcab\n", "size of that", ourSize / 1e6, theirSize / 1e6);
    std::printf("RATIO size of %s vs gcab %.2f\n", what.c_str(), theirSize / ourSize);
}

void CompareExtraction(const std::string& what, const bench::Workplace& memory, const std::string& cabinet,
                       std::size_t bytes) {
    const std::string out = memory / "out";
    const Names extract{kProbe, "extract", cabinet, out, "--format", "cab"};
    const bench::Side peer =
        bench::QuickestOf({bench::ProgramSide("cabextract", {"cabextract", "-q", "-d", out, cabinet}, out),
                           bench::ProgramSide("7zz", {"7zz", "x", "-y", "-bd", "-o" + out, cabinet}, out),
                           bench::ProgramSide("bsdtar", {"bsdtar", "xf", cabinet, "-C", out}, out)});
    bench::Compare("extracting " + what, bytes, bench::ProgramSide("probe", extract, out), peer);
    fs::remove_all(out);
    PrintMemory("extracting " + what, bench::MemoryOf(extract));
    fs::remove_all(out);
}

/// The names that extraction takes, in list order.
Names NamesOf(const std::string& cabinet) {
    cabinet::CabFile cab;
    Names names;
    cab.CabName = cabinet;
    cab.FileFound = [&](const std::string& name, const std::string& folder, std::uint32_t,
                        const platform::SystemTime&) { names.push_back(folder + name); };
    bench::Require(static_cast<bool>(cab.GetInfo("")), "listing");
    return names;
}

/// One file after another in an order of names, beside all at once. 1 / 1.3 = 0.77 is what is promised.
void CompareOrder(const std::string& what, const bench::Workplace& memory, const std::string& cabinet,
                  std::size_t bytes, const std::function<void(Names&)>& arrange) {
    const std::string out = memory / "out";
    const std::string target = platform::PathFromHost(out);
    const std::string path = platform::PathFromHost(cabinet);
    Names names = NamesOf(path);
    arrange(names);
    const auto clean = [&] { fs::remove_all(out); };
    const auto oneByOne = [&] {
        cabinet::CabFile cab;
        cab.CabName = path;
        for (const std::string& name : names)
            bench::Require(static_cast<bool>(cab.Extract(name, target, path)), name);
    };
    const auto atOnce = [&] {
        cabinet::CabFile cab;
        cab.CabName = path;
        bench::Require(static_cast<bool>(cab.Extract("", target, path)), "extracting");
    };
    bench::Compare("one by one, " + what, bytes, {"CabFile", oneByOne, clean}, {"at once", atOnce, clean},
                   bench::Clock::kProcessor);
    clean();
}

void Shuffle(Names& names) {
    std::ranges::shuffle(names, std::mt19937(1));
}

void SourceText(const bench::Workplace& memory) {
    const std::size_t bytes = bench::MakeSourceTree(memory / "text", kLarge / 17'000, 17'000);
    ComparePacking("source text", memory, "text", bytes);
    CompareExtraction("source text, gcab's", memory, memory / "their/text.cab", bytes);
    CompareExtraction("source text, ours", memory, memory / "our/text.cab", bytes);
    const std::string cabinet = memory / "their/text.cab";
    CompareOrder("in list order", memory, cabinet, bytes, [](Names&) {});
    CompareOrder("last first", memory, cabinet, bytes, [](Names& names) { std::ranges::reverse(names); });
    CompareOrder("at random", memory, cabinet, bytes, Shuffle);
    CompareOrder("at random, ours", memory, memory / "our/text.cab", bytes, Shuffle);
    fs::remove_all(memory / "text");
}

void MachineCode(const bench::Workplace& memory) {
    fs::create_directory(memory / "code");
    for (const bench::Sample& sample : bench::MakeSamples(kLarge)) {
        if (sample.name == "code")
            bench::WriteFile(memory / "code/program", sample.bytes);
    }
    ComparePacking("machine code", memory, "code", kLarge);
    CompareExtraction("one large file", memory, memory / "our/code.cab", kLarge);
    fs::remove_all(memory / "code");
}

void SmallFiles(const bench::Workplace& memory) {
    const std::size_t bytes = bench::MakeSourceTree(memory / "small", 20'000, 2'000);
    ComparePacking("20000 small files", memory, "small", bytes);
    CompareExtraction("20000 small files", memory, memory / "our/small.cab", bytes);
    CompareOrder("20000 small files at random", memory, memory / "our/small.cab", bytes, Shuffle);
    fs::remove_all(memory / "small");
}

/// More data blocks than one folder of a cabinet can count, read back by others.
void ManyBlocks(const bench::Workplace& memory) {
    fs::create_directories(memory / "blocks");
    for (const std::string name : {"a", "b"}) {
        bench::WriteFile(memory / ("blocks/" + name), {});
        fs::resize_file(memory / ("blocks/" + name), std::uintmax_t{1200} << 20);
    }
    bench::RunCommand({kProbe, "pack", memory / "blocks", memory / "our"});
    const std::string cabinet = memory / "our/blocks.cab";
    bench::RunCommand({"7zz", "t", cabinet});
    bench::RunCommand({"cabextract", "-t", "-q", cabinet});
    std::printf("%-24s %9.1f MB read back by 7zz and cabextract\n", "2.4 GB in one cabinet",
                static_cast<double>(fs::file_size(cabinet)) / 1e6);
}

} // namespace

/// `cab_bench PART...` runs only these: text, code, small, blocks.
int main(int count, char** words) {
    const std::vector<std::string_view> wanted(words + 1, words + count);
    const auto runs = [&](std::string_view part) {
        return wanted.empty() || std::ranges::count(wanted, part) > 0;
    };
    const bench::Workplace memory(fs::is_directory("/dev/shm") ? fs::path("/dev/shm")
                                                               : fs::temp_directory_path());
    if (runs("text"))
        SourceText(memory);
    if (runs("code"))
        MachineCode(memory);
    if (runs("small"))
        SmallFiles(memory);
    if (runs("blocks"))
        ManyBlocks(memory);
}
