#include "archive/cabinet/CabinetCheck.h"

#include "archive/cabinet/CabinetFormat.h"
#include "archive/cabinet/MspackServices.h"
#include "archive/cabinet/ThreadCount.h"
#include "platform/BufferedInput.h"

#include <algorithm>
#include <condition_variable>
#include <cstring>
#include <system_error>
#include <thread>

namespace cabinet {
namespace {

constexpr std::size_t kMostThreads = 4; // each has read the records for itself
constexpr std::size_t kCompareStep = 65536;
constexpr std::chrono::milliseconds kPause{20};

const CabReport kNotTheSame{CabFailure::kReadBack, "", {}};

/// The whole file, as the library sees it.
class WholeFile final : public MspackInput {
  public:
    explicit WholeFile(platform::FileReader& file) : input_(file) {}

    std::size_t Read(std::uint64_t position, std::span<std::uint8_t> out) override {
        input_.Seek(position);
        return input_.ReadSome(out);
    }

    bool Faulted() const override { return input_.Faulted(); }

  private:
    platform::BufferedInput input_;
};

bool HasFields(const mscabd_file& file, const StoredFields& fields) {
    return file.attribs == fields.attributes && file.date_y == (fields.date >> 9) + 1980 &&
           file.date_m == (fields.date >> 5 & 15) && file.date_d == (fields.date & 31) &&
           file.time_h == fields.time >> 11 && file.time_m == (fields.time >> 5 & 63) &&
           file.time_s == (fields.time & 31) * 2;
}

/// What all threads share: which folders are left, and the first failure.
class Findings {
  public:
    explicit Findings(std::size_t folderCount) : folderCount_(folderCount) {}

    /// The number of a folder that nobody has taken yet; false when there is none or no point.
    bool Take(std::size_t& folder) {
        const std::lock_guard lock(mutex_);
        if (report_.failure != CabFailure::kNone || next_ == folderCount_)
            return false;
        folder = next_++;
        return true;
    }

    void Fail(CabReport report) {
        const std::lock_guard lock(mutex_);
        if (report_.failure == CabFailure::kNone)
            report_ = std::move(report);
    }

    void ThreadEnded() {
        const std::lock_guard lock(mutex_);
        ++ended_;
        changed_.notify_one();
    }

    bool WaitFor(std::size_t threads) {
        std::unique_lock lock(mutex_);
        return changed_.wait_for(lock, kPause, [&] { return ended_ == threads; });
    }

    const CabReport& Report() const { return report_; }

  private:
    std::mutex mutex_;
    std::condition_variable changed_;
    std::size_t folderCount_;
    std::size_t next_ = 0;
    std::size_t ended_ = 0;
    CabReport report_;
};

/// One thread's reading of the cabinet.
class Checker {
  public:
    Checker(const PackPlan& plan, const PackSource& source, platform::FileReader& cabinet,
            ProgressMeter& progress, Findings& findings)
        : plan_(plan), source_(source), progress_(progress), findings_(findings), input_(cabinet),
          services_(input_), compared_(kCompareStep) {}

    void Run() {
        base::SystemError error;
        const mscabd_cabinet* cabinet = services_.Open(error);
        if (!cabinet)
            return findings_.Fail({CabFailure::kReadBack, "", error});
        if (!CompareRecords(*cabinet))
            return findings_.Fail(kNotTheSame);
        std::size_t folder = 0;
        while (findings_.Take(folder)) {
            const PlannedFolder& planned = plan_.folders[folder];
            for (std::size_t i = planned.firstFile; i < planned.firstFile + planned.fileCount; ++i) {
                if (!CompareContent(i))
                    return;
            }
        }
    }

  private:
    bool CompareRecords(const mscabd_cabinet& cabinet);
    bool CompareContent(std::size_t index);
    base::SystemError Compare(std::span<const std::uint8_t> data, PackInput& input, bool& sourceFailed);

    const PackPlan& plan_;
    const PackSource& source_;
    ProgressMeter& progress_;
    Findings& findings_;
    WholeFile input_;
    MspackServices services_;
    std::vector<mscabd_file*> files_;
    std::vector<std::uint8_t> compared_;
};

/// The list of files, in order, and the folders that they are in.
bool Checker::CompareRecords(const mscabd_cabinet& cabinet) {
    files_.reserve(plan_.files.size());
    mscabd_file* file = cabinet.files;
    const mscabd_folder* folder = cabinet.folders;
    for (const PlannedFolder& planned : plan_.folders) {
        if (!folder || folder->num_blocks != planned.BlockCount())
            return false;
        for (std::size_t i = planned.firstFile; i < planned.firstFile + planned.fileCount; ++i) {
            const PackEntry& entry = plan_.files[i];
            if (!file || file->folder != folder || entry.name != file->filename ||
                file->length != entry.identity.size || !HasFields(*file, StoredFieldsOf(entry)))
                return false;
            files_.push_back(file);
            file = file->next;
        }
        folder = folder->next;
    }
    return !file && !folder;
}

bool Checker::CompareContent(std::size_t index) {
    const PackEntry& entry = plan_.files[index];
    progress_.SetFile(entry.name);
    const auto fail = [&](CabFailure failure, base::SystemError error = {}) {
        findings_.Fail({failure, source_.PathOf(entry.name), error});
        return false;
    };
    CabReport report;
    const std::unique_ptr<PackInput> input = source_.OpenFile(entry, report);
    if (!input) {
        findings_.Fail(std::move(report));
        return false;
    }
    bool sourceFailed = false;
    std::uint64_t written = 0;
    const base::SystemError error = services_.Extract(
        *files_[index],
        [&](std::span<const std::uint8_t> data) { return Compare(data, *input, sourceFailed); }, written);
    if (progress_.IsStopped())
        return fail(CabFailure::kStopped);
    if (!input->IsUnchanged())
        return fail(CabFailure::kChanged);
    if (sourceFailed)
        return fail(CabFailure::kCannotRead, error);
    if (error || written != entry.identity.size)
        return fail(CabFailure::kReadBack, error);
    return true;
}

base::SystemError Checker::Compare(std::span<const std::uint8_t> data, PackInput& input, bool& sourceFailed) {
    while (!data.empty()) {
        if (progress_.IsStopped())
            return {base::kErrorGeneralFailure};
        const std::span<std::uint8_t> own =
            std::span(compared_).first(std::min(data.size(), compared_.size()));
        std::size_t count = 0;
        if (const base::SystemError error = input.Read(own, count)) {
            sourceFailed = true;
            return error;
        }
        if (count < own.size() || std::memcmp(own.data(), data.data(), own.size()) != 0)
            return {base::kErrorInvalidData};
        data = data.subspan(own.size());
        progress_.Add(own.size());
    }
    return {};
}

} // namespace

CabReport CheckCabinet(const PackPlan& plan, const PackSource& source, platform::FileReader& cabinet,
                       ProgressMeter& progress) {
    Findings findings(plan.folders.size());
    const std::size_t wanted = std::min({ThreadCount(), kMostThreads, plan.folders.size()});
    std::vector<std::thread> threads;
    const auto work = [&] {
        try {
            Checker(plan, source, cabinet, progress, findings).Run();
        } catch (const std::bad_alloc&) {
            findings.Fail({CabFailure::kReadBack, "", {base::kErrorNotEnoughMemory}});
        }
        findings.ThreadEnded();
    };
    try {
        while (threads.size() < wanted)
            threads.emplace_back(work);
    } catch (const std::system_error&) {
        if (threads.empty())
            work();
    }
    if (!threads.empty()) {
        while (!findings.WaitFor(threads.size()))
            progress.Tell();
    }
    for (std::thread& thread : threads)
        thread.join();
    return findings.Report();
}

} // namespace cabinet
