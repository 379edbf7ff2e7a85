#include "archive/cabinet/CabinetWriter.h"

#include "archive/cabinet/BlockPipeline.h"
#include "archive/cabinet/CabinetFormat.h"

#include <algorithm>
#include <limits>

namespace cabinet {
namespace {

constexpr std::uint64_t kLargestCabinet = std::numeric_limits<std::uint32_t>::max();

/// Writes what comes out of the pipeline behind the space for the records.
class CabinetWriter {
  public:
    CabinetWriter(const PackPlan& plan, const PackSource& source, platform::StagedFile& out,
                  ProgressMeter& progress)
        : plan_(plan), source_(source), out_(out), progress_(progress), end_(plan.recordsSize),
          pipeline_([this](const PackedRun& run) { return Put(run); }) {}

    CabReport Write() {
        for (const PlannedFolder& folder : plan_.folders) {
            isContinued_ = false;
            if (!PackFolder(folder))
                return report_;
        }
        if (const base::SystemError error = pipeline_.Finish())
            return OutputFailed(error);
        FindDataOffsets();
        const auto records = RecordsOf(plan_, dataOffsets_, static_cast<std::uint32_t>(end_));
        if (const base::SystemError error = out_.WriteAt(0, records))
            return OutputFailed(error);
        return {};
    }

  private:
    bool PackFolder(const PlannedFolder& folder);
    bool PackFile(const PackEntry& file);
    bool TakeRun();
    void SubmitRun();
    base::SystemError Put(const PackedRun& run);
    void FindDataOffsets();
    CabReport OutputFailed(base::SystemError error) const;
    bool Fail(CabReport report);

    const PackPlan& plan_;
    const PackSource& source_;
    platform::StagedFile& out_;
    ProgressMeter& progress_;
    std::uint64_t end_; // of what is written
    std::vector<std::uint64_t> runStarts_;
    std::vector<std::size_t> runBlocks_;
    std::vector<std::uint32_t> dataOffsets_; // by folder
    bool tooLarge_ = false;
    PackedRun* run_ = nullptr; // being filled
    bool isContinued_ = false;
    CabReport report_;
    BlockPipeline pipeline_; // last: its threads go first
};

bool CabinetWriter::Fail(CabReport report) {
    report_ = std::move(report);
    return false;
}

CabReport CabinetWriter::OutputFailed(base::SystemError error) const {
    return tooLarge_ ? CabReport{CabFailure::kCabinetTooLarge, "", {}}
                     : CabReport{CabFailure::kCannotWrite, "", error};
}

bool CabinetWriter::PackFolder(const PlannedFolder& folder) {
    for (std::size_t i = folder.firstFile; i < folder.firstFile + folder.fileCount; ++i) {
        if (!PackFile(plan_.files[i]))
            return false;
    }
    if (run_)
        SubmitRun();
    return true;
}

bool CabinetWriter::PackFile(const PackEntry& file) {
    progress_.SetFile(file.name);
    CabReport report;
    const std::unique_ptr<PackInput> input = source_.OpenFile(file, report);
    if (!input)
        return Fail(std::move(report));
    std::uint64_t left = file.identity.size;
    while (left > 0) {
        if (!progress_.Tell())
            return Fail({CabFailure::kStopped, "", {}});
        if (!run_ && !TakeRun())
            return false;
        std::span<std::uint8_t> room = run_->Room();
        room = room.first(static_cast<std::size_t>(std::min<std::uint64_t>(room.size(), left)));
        std::size_t count = 0;
        if (const base::SystemError error = input->Read(room, count))
            return Fail({CabFailure::kCannotRead, source_.PathOf(file.name), error});
        if (count < room.size())
            break;
        run_->Fill(count);
        left -= count;
        progress_.Add(count);
        if (run_->IsFull())
            SubmitRun();
    }
    if (left > 0 || !input->IsUnchanged())
        return Fail({CabFailure::kChanged, source_.PathOf(file.name), {}});
    return true;
}

bool CabinetWriter::TakeRun() {
    base::SystemError error;
    run_ = pipeline_.Next(isContinued_, error);
    return run_ || Fail(OutputFailed(error));
}

void CabinetWriter::SubmitRun() {
    pipeline_.Submit();
    run_ = nullptr;
    isContinued_ = true;
}

base::SystemError CabinetWriter::Put(const PackedRun& run) {
    if (end_ + run.Packed().size() > kLargestCabinet) {
        tooLarge_ = true;
        return {base::kErrorDiskFull};
    }
    const base::SystemError error = out_.WriteAt(end_, run.Packed());
    runStarts_.push_back(end_);
    runBlocks_.push_back(run.BlockCount());
    end_ += run.Packed().size();
    return error;
}

/// Every folder but an empty one begins with a run of its own.
void CabinetWriter::FindDataOffsets() {
    std::size_t run = 0;
    for (const PlannedFolder& folder : plan_.folders) {
        dataOffsets_.push_back(static_cast<std::uint32_t>(run < runStarts_.size() ? runStarts_[run] : end_));
        for (std::size_t blocks = folder.BlockCount(); blocks > 0; ++run)
            blocks -= runBlocks_[run];
    }
}

} // namespace

CabReport WriteCabinet(const PackPlan& plan, const PackSource& source, platform::StagedFile& out,
                       ProgressMeter& progress) {
    return CabinetWriter(plan, source, out, progress).Write();
}

} // namespace cabinet
