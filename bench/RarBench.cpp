// RAR archives through the probe, which tests each and then extracts it, beside a program that extracts it
// twice; and the listing of many entries.

#include "Compare.h"
#include "Peers.h"
#include "RunCommand.h"
#include "Samples.h"
#include "Workplace.h"
#include "support/RarBuilder.h"

#include <filesystem>
#include <string>

namespace {

namespace fs = std::filesystem;

const std::string kProbe = PELLARION_PROBE;
const fs::path kCorpus = PELLARION_CORPUS;
constexpr std::size_t kLarge = std::size_t{200} << 20;
constexpr int kManyEntries = 65'000;

void CompareExtraction(const std::string& what, const bench::Workplace& memory, const std::string& archive,
                       std::size_t bytes) {
    const std::string out = memory / "out";
    const std::string once = "bsdtar -xf '" + archive + "' -C '" + out + "'";
    const bench::Side ours =
        bench::ProgramSide("probe", {kProbe, "extract", archive, out, "--format", "rar"}, out);
    const bench::Side peer = bench::ProgramSide("bsdtar twice", {"sh", "-c", once + " && " + once}, out);
    bench::Compare("extracting " + what, bytes, ours, peer);
    fs::remove_all(out);
}

/// Half of it is machine code, half an image.
void Stored(const bench::Workplace& memory) {
    tests::RarBuilder builder;
    for (const bench::Sample& sample : bench::MakeSamples(kLarge / 2)) {
        if (sample.name == "code" || sample.name == "image")
            builder.items.push_back({sample.name, {sample.bytes.begin(), sample.bytes.end()}});
    }
    const std::string bytes = builder.Bytes();
    builder.items.clear();
    bench::WriteFile(memory / "stored.rar", {bytes.begin(), bytes.end()});
    CompareExtraction("200 MB stored", memory, memory / "stored.rar", kLarge);
    fs::remove(memory / "stored.rar");
}

/// The largest packed archives there are to test with.
void Packed(const bench::Workplace& memory) {
    constexpr std::size_t kLargeSize = 67'108'864;
    constexpr std::size_t kAudioSize = 5'176'144;
    for (const auto& [name, size] : {std::pair{"sharpcompress/Large.rar", kLargeSize},
                                     std::pair{"sharpcompress/Rar.Audio_program.rar", kAudioSize}}) {
        const fs::path archive = kCorpus / "rar" / name;
        if (fs::exists(archive))
            CompareExtraction(archive.filename().string(), memory, archive.string(), size);
    }
}

void Listing(const bench::Workplace& memory) {
    tests::RarBuilder builder;
    for (int i = 0; i < kManyEntries; ++i)
        builder.items.push_back({"folder/entry " + std::to_string(i) + ".txt", "content"});
    const std::string bytes = builder.Bytes();
    const std::string archive = memory / "many.rar";
    bench::WriteFile(archive, {bytes.begin(), bytes.end()});
    builder.items = {};
    bench::Compare("listing 65000 entries", bytes.size(),
                   bench::ProgramSide("probe", {kProbe, "list", archive}),
                   bench::ProgramSide("bsdtar", {"bsdtar", "-tf", archive}));
    const std::size_t held = bench::MemoryOf({kProbe, "list", archive});
    std::printf("%-24s %9.1f MB held\n", "memory of that", static_cast<double>(held) / 1e6);
}

} // namespace

int main() {
    const bench::Workplace memory(fs::is_directory("/dev/shm") ? fs::path("/dev/shm")
                                                               : fs::temp_directory_path());
    Listing(memory); // first, since a program is charged with what the bench held when it started it
    Packed(memory);
    Stored(memory);
}
