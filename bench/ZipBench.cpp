// The probe, which unpacks through the classes of the dialogs, beside other unpackers: whole programs,
// started for each run, so that everything between the archive and the files counts.

#include "Compare.h"
#include "RunCommand.h"
#include "Samples.h"
#include "SourceTree.h"
#include "support/ZipBuilder.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

namespace fs = std::filesystem;

using Words = std::vector<std::string>;

const std::string kProbe = PELLARION_PROBE;

/// A folder that goes with everything in it.
class Workplace {
  public:
    explicit Workplace(const fs::path& parent) {
        std::string pattern = (parent / "zipbench-XXXXXX").string();
        bench::Require(mkdtemp(pattern.data()) != nullptr, "temporary folder in " + parent.string());
        path_ = pattern;
    }

    ~Workplace() {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }

    Workplace(const Workplace&) = delete;
    Workplace& operator=(const Workplace&) = delete;

    std::string operator/(const std::string& name) const { return (path_ / name).string(); }

  private:
    fs::path path_;
};

bench::Side SideOf(const std::string& name, const Words& words, const std::string& cleaned = "") {
    const auto prepare = [cleaned] {
        if (cleaned.empty())
            return;
        fs::remove_all(cleaned);
        fs::create_directory(cleaned);
    };
    return {name, [words] { bench::RunCommand(words); }, prepare};
}

/// The peer that is quickest in the best of three runs each.
bench::Side Quickest(const std::vector<bench::Side>& peers) {
    std::vector<double> best(peers.size(), 1e9);
    for (int run = 0; run < 3; ++run)
        for (std::size_t i = 0; i < peers.size(); ++i) {
            peers[i].prepare();
            const auto start = std::chrono::steady_clock::now();
            peers[i].run();
            best[i] = std::min(
                best[i], std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
        }
    return peers[static_cast<std::size_t>(std::ranges::min_element(best) - best.begin())];
}

std::vector<bench::Side> Installed(const std::vector<bench::Side>& peers) {
    std::vector<bench::Side> installed;
    for (const bench::Side& peer : peers)
        if (bench::HasCommand(peer.name))
            installed.push_back(peer);
    bench::Require(!installed.empty(), "unzip, 7zz or bsdtar");
    return installed;
}

void CompareExtraction(const std::string& what, std::size_t bytes, const std::string& archive,
                       const std::string& out) {
    const bench::Side peer =
        Quickest(Installed({SideOf("unzip", {"unzip", "-q", "-o", archive, "-d", out}, out),
                            SideOf("7zz", {"7zz", "x", "-y", "-o" + out, archive}, out),
                            SideOf("bsdtar", {"bsdtar", "xf", archive, "-C", out}, out)}));
    bench::Compare(what, bytes, SideOf("probe", {kProbe, "extract", archive, out, "--format", "zip"}, out),
                   peer);
}

void CompareListing(const std::string& archive, std::size_t bytes) {
    const bench::Side peer =
        Quickest(Installed({SideOf("unzip", {"unzip", "-l", archive}), SideOf("7zz", {"7zz", "l", archive}),
                            SideOf("bsdtar", {"bsdtar", "-tf", archive})}));
    bench::Compare("65535 entries listed", bytes, SideOf("probe", {kProbe, "list", archive}), peer);
}

void SmallFiles(const Workplace& memory) {
    const std::size_t bytes = bench::MakeSourceTree(memory / "tree", 20'000, 12'500);
    const std::string archive = memory / "tree.zip";
    bench::RunCommand({"7zz", "a", "-tzip", archive, memory / "tree"});
    fs::remove_all(memory / "tree");
    CompareExtraction("20000 files in memory", bytes, archive, memory / "out");
    fs::remove_all(memory / "out");
    const Workplace disk(fs::temp_directory_path());
    fs::copy_file(archive, disk / "tree.zip");
    CompareExtraction("20000 files on disk", bytes, disk / "tree.zip", disk / "out");
}

void OneLargeFile(const Workplace& memory) {
    constexpr std::size_t kHalf = std::size_t{60} << 20;
    bench::Bytes content;
    for (bench::Sample& sample : bench::MakeSamples(kHalf))
        if (sample.name == "text" || sample.name == "code")
            content.insert(content.end(), sample.bytes.begin(), sample.bytes.end());
    bench::WriteFile(memory / "large", content);
    const std::string archive = memory / "large.zip";
    bench::RunCommand({"7zz", "a", "-tzip", archive, memory / "large"});
    fs::remove(memory / "large");
    CompareExtraction("one large file in memory", content.size(), archive, memory / "out");

    const auto allowed =
        static_cast<double>(content.size() + fs::file_size(archive) + (std::size_t{32} << 20));
    const auto peak = static_cast<double>(
        bench::RunCommand({kProbe, "extract", archive, memory / "out", "--format", "zip"}));
    std::printf("%-24s %9.1f MB held, %.1f MB allowed (stored + decoded + 32 MB)\n", "memory of that",
                peak / 1e6, allowed / 1e6);
    std::printf("RATIO memory of one large file vs allowance %.2f\n", allowed / peak);
}

void Directory(const Workplace& memory) {
    tests::ZipBuilder zip;
    for (int i = 0; i < 65'535; ++i)
        zip.entries.push_back(tests::StoredEntry(
            "source/module-" + std::to_string(i / 200) + "/part-" + std::to_string(i) + ".cpp", ""));
    const std::string bytes = zip.Bytes();
    bench::WriteFile(memory / "many.zip", bench::Bytes(bytes.begin(), bytes.end()));
    CompareListing(memory / "many.zip", bytes.size());
}

} // namespace

int main() {
    const Workplace memory(fs::is_directory("/dev/shm") ? fs::path("/dev/shm") : fs::temp_directory_path());
    SmallFiles(memory);
    OneLargeFile(memory);
    Directory(memory);
}
