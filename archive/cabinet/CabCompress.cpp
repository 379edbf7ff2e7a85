#include "archive/cabinet/CabCompress.h"

#include "archive/cabinet/CabinetCheck.h"
#include "archive/cabinet/CabinetFormat.h"
#include "archive/cabinet/CabinetWriter.h"
#include "archive/cabinet/PackPlan.h"
#include "platform/StagedFile.h"

#include <chrono>
#include <future>
#include <new>
#include <system_error>

namespace cabinet {

using cabinet::PackPlan;
using cabinet::ProgressMeter;

namespace {

constexpr std::chrono::milliseconds kPause{20};

std::unique_ptr<PackSource> OpenSource(std::int32_t mode, const std::string& path, CabReport& report) {
    switch (mode) {
    case kCabModeFolder:
        return PackSource::OfFolder(path, report);
    case kCabModeFile:
        return PackSource::OfSingleFile(path, report);
    default:
        report = {CabFailure::kWrongCall, path, {}};
        return nullptr;
    }
}

/// Runs `work`, which may take long (bringing data onto a slow medium, for example), on a thread of its own
/// and calls the observer meanwhile. Returns the result of `work`.
template <typename Result, typename Work>
Result DoWhileTelling(ProgressMeter& progress, const Work& work) {
    Result result;
    try {
        std::future<Result> done = std::async(std::launch::async, work);
        while (done.wait_for(kPause) == std::future_status::timeout)
            progress.Tell();
        result = done.get();
    } catch (const std::system_error&) { // no thread to be had
        result = work();
    }
    return result;
}

/// The source is deleted as a whole later, so a file that was added or removed meanwhile counts as a change,
/// too. The observer is not called during this listing, because it lets window messages run, and so
/// the source could change behind the listing.
CabReport ListAgain(PackSource& source, const PackPlan& plan, const std::string& path) {
    std::vector<PackEntry> now;
    CabReport report = source.List(now, cabinet::kMostFiles);
    if (report.failure == CabFailure::kNone && now != plan.files)
        report = {CabFailure::kChanged, path, {}};
    return report;
}

CabReport Make(std::int32_t mode, const std::string& destination, const std::string& cabinetName,
               const std::string& path, ProgressMeter& progress) {
    CabReport report;
    const std::unique_ptr<PackSource> source = OpenSource(mode, path, report);
    if (!source)
        return report;
    PackPlan plan;
    {
        std::vector<PackEntry> found;
        report =
            DoWhileTelling<CabReport>(progress, [&] { return source->List(found, cabinet::kMostFiles); });
        if (report.failure == CabFailure::kNone)
            report = plan.Make(std::move(found));
        if (report.failure != CabFailure::kNone)
            return report;
    }
    progress.SetTotal(2 * plan.size);
    base::SystemError error;
    const std::unique_ptr<platform::StagedFile> staged =
        platform::StagedFile::Create(destination, cabinetName, error);
    if (!staged)
        return {CabFailure::kCannotWrite, "", error};
    report = cabinet::WriteCabinet(plan, *source, *staged, progress);
    if (report.failure != CabFailure::kNone)
        return report;
    if ((error = DoWhileTelling<base::SystemError>(progress, [&] { return staged->Flush(); })))
        return {CabFailure::kCannotWrite, "", error};
    report = cabinet::CheckCabinet(plan, *source, *staged, progress);
    if (report.failure == CabFailure::kNone && !progress.Tell())
        report = {CabFailure::kStopped, "", {}};
    if (report.failure == CabFailure::kNone)
        report = ListAgain(*source, plan, path);
    if (report.failure == CabFailure::kNone && (error = staged->Commit()))
        report = {CabFailure::kCannotWrite, "", error};
    return report;
}

std::string ReasonText(CabFailure failure) {
    switch (failure) {
    case CabFailure::kNone:
        return "";
    case CabFailure::kCannotRead:
        return "cannot be read";
    case CabFailure::kLink:
        return "is a link, which a cabinet cannot hold";
    case CabFailure::kSpecialFile:
        return "is neither a file nor a folder";
    case CabFailure::kEmptyFolder:
        return "is an empty folder, which a cabinet cannot hold";
    case CabFailure::kName:
        return "has a name that a cabinet cannot hold or that not every system can unpack";
    case CabFailure::kFileTooLarge:
        return "is too large for a cabinet";
    case CabFailure::kTooManyFiles:
        return "holds more files than a cabinet can";
    case CabFailure::kCabinetTooLarge:
        return "does not fit into one cabinet";
    case CabFailure::kChanged:
        return "changed while it was packed";
    case CabFailure::kCannotWrite:
        return "cannot be written";
    case CabFailure::kReadBack:
        return "could not be read back from the cabinet as it was packed";
    case CabFailure::kStopped:
        return "was not packed because the packing was stopped";
    case CabFailure::kWrongCall:
        return "was to be packed in a way that does not exist";
    }
    return "";
}

} // namespace

std::string CabReport::Description() const {
    if (failure == CabFailure::kNone)
        return "";
    std::string text = path + " " + ReasonText(failure);
    text += error ? ": " + error.Description() : ".";
    return text;
}

CabReport CabCompress(std::int32_t mode, const std::string& destination, const std::string& cabinetName,
                      const std::string& source, std::int16_t& status, base::WorkObserver* observer) {
    CabReport report;
    try {
        ProgressMeter meter(observer);
        report = Make(mode, destination, cabinetName, source, meter);
    } catch (const std::bad_alloc&) {
        report = {CabFailure::kCannotWrite, "", {base::kErrorNotEnoughMemory}};
    }
    if (report.path.empty() && report.failure != CabFailure::kNone)
        report.path = report.failure == CabFailure::kCannotWrite ? destination + cabinetName : source;
    status = static_cast<std::int16_t>(report.failure);
    return report;
}

} // namespace cabinet
