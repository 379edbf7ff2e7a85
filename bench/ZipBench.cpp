// The probe, which unpacks through the classes of the dialogs, beside other unpackers: whole programs,
// started for each run, so that everything between the archive and the files counts.

#include "BareFiles.h"
#include "Compare.h"
#include "Peers.h"
#include "RunCommand.h"
#include "Samples.h"
#include "SourceTree.h"
#include "Workplace.h"
#include "support/ZipBuilder.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <sys/wait.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

const std::string kProbe = PELLARION_PROBE;

bench::Side Probe(const std::string& archive, const std::string& out) {
    return bench::ProgramSide("probe", {kProbe, "extract", archive, out, "--format", "zip"}, out);
}

void CompareExtraction(const std::string& what, std::size_t bytes, const std::string& archive,
                       const std::string& out) {
    const bench::Side peer =
        bench::QuickestOf({bench::ProgramSide("unzip", {"unzip", "-q", "-o", archive, "-d", out}, out),
                           bench::ProgramSide("7zz", {"7zz", "x", "-y", "-o" + out, archive}, out),
                           bench::ProgramSide("bsdtar", {"bsdtar", "xf", archive, "-C", out}, out)});
    bench::Compare(what, bytes, Probe(archive, out), peer);
}

/// Shows how much of an extraction is the file system's: no peer could be quicker than that.
void CompareToBareFiles(const std::string& what, std::size_t bytes, const std::string& archive,
                        const std::string& out) {
    const bench::BareFiles files(out);
    bench::Compare(what, bytes, Probe(archive, out),
                   {"bare-files", [&] { files.Make(out); }, [&] { bench::EmptyFolder(out); }});
}

void CompareListing(const std::string& archive, std::size_t bytes) {
    const bench::Side peer = bench::QuickestOf({bench::ProgramSide("unzip", {"unzip", "-l", archive}),
                                                bench::ProgramSide("7zz", {"7zz", "l", archive}),
                                                bench::ProgramSide("bsdtar", {"bsdtar", "-tf", archive})});
    bench::Compare("65535 entries listed", bytes, bench::ProgramSide("probe", {kProbe, "list", archive}),
                   peer);
}

void SmallFiles(const bench::Workplace& memory, bool inMemory, bool onDisk) {
    const std::size_t bytes = bench::MakeSourceTree(memory / "tree", 20'000, 12'500);
    const std::string archive = memory / "tree.zip";
    bench::RunCommand({"7zz", "a", "-tzip", archive, memory / "tree"});
    fs::remove_all(memory / "tree");
    if (inMemory)
        CompareExtraction("20000 files in memory", bytes, archive, memory / "out");
    fs::remove_all(memory / "out");
    if (!onDisk)
        return;
    const bench::Workplace disk(fs::temp_directory_path());
    fs::copy_file(archive, disk / "tree.zip");
    CompareExtraction("20000 files on disk", bytes, disk / "tree.zip", disk / "out");
    CompareToBareFiles("20000 files on disk", bytes, disk / "tree.zip", disk / "out");
}

/// Writes text and machine code of this machine's system to one file. A process of its own does it: what this
/// one has held would count as memory of every program that it starts.
void MakeLargeFile(const std::string& path) {
    const pid_t child = fork();
    if (child == 0) {
        constexpr std::size_t kHalf = std::size_t{60} << 20;
        std::ofstream file(path, std::ios::binary);
        for (const bench::Sample& sample : bench::MakeSamples(kHalf))
            if (sample.name == "text" || sample.name == "code")
                file.write(reinterpret_cast<const char*>(sample.bytes.data()),
                           static_cast<std::streamsize>(sample.bytes.size()));
        file.close();
        _exit(file.good() ? 0 : 1);
    }
    int status = 0;
    bench::Require(child > 0 && waitpid(child, &status, 0) == child && status == 0, path);
}

void OneLargeFile(const bench::Workplace& memory) {
    MakeLargeFile(memory / "large");
    const auto size = fs::file_size(memory / "large");
    const std::string archive = memory / "large.zip";
    bench::RunCommand({"7zz", "a", "-tzip", archive, memory / "large"});
    fs::remove(memory / "large");
    CompareExtraction("one large file in memory", size, archive, memory / "out");

    const auto allowed = static_cast<double>(size + fs::file_size(archive) + (std::size_t{32} << 20));
    const auto peak =
        static_cast<double>(bench::MemoryOf({kProbe, "extract", archive, memory / "out", "--format", "zip"}));
    std::printf("%-24s %9.1f MB held, %.1f MB allowed (stored + decoded + 32 MB)\n", "memory of that",
                peak / 1e6, allowed / 1e6);
    std::printf("RATIO memory of one large file vs allowance %.2f\n", allowed / peak);
}

void Directory(const bench::Workplace& memory) {
    tests::ZipBuilder zip;
    for (int i = 0; i < 65'535; ++i)
        zip.entries.push_back(tests::StoredEntry(
            "source/module-" + std::to_string(i / 200) + "/part-" + std::to_string(i) + ".cpp", ""));
    const std::string bytes = zip.Bytes();
    bench::WriteFile(memory / "many.zip", bench::Bytes(bytes.begin(), bytes.end()));
    CompareListing(memory / "many.zip", bytes.size());
}

} // namespace

/// An argument names one part: files, disk, large or directory.
int main(int argc, char** argv) {
    const std::string_view only = argc > 1 ? argv[1] : "";
    const auto wanted = [&](std::string_view part) { return only.empty() || only == part; };
    const bench::Workplace memory(fs::is_directory("/dev/shm") ? fs::path("/dev/shm")
                                                               : fs::temp_directory_path());
    if (wanted("files") || wanted("disk"))
        SmallFiles(memory, wanted("files"), wanted("disk"));
    if (wanted("large"))
        OneLargeFile(memory);
    if (wanted("directory"))
        Directory(memory);
}
