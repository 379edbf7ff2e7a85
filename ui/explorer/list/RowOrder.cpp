#include "ui/explorer/list/RowOrder.h"

#include "base/Letters.h"
#include "ui/common/WindowTexts.h"

#include <algorithm>
#include <numeric>

namespace ui {

namespace {

/// Rows that are sorted or merged in one piece: a few milliseconds of work.
constexpr std::size_t kSlice = 4096;

template <class Key>
int Order(const Key& left, const Key& right) {
    return left < right ? -1 : (right < left ? 1 : 0);
}

/// Folders before files, then by name: what the name sort keys "00..." and "11..." say.
int OrderByName(const FileRow& left, const FileRow& right) {
    if (left.isFolder != right.isFolder)
        return left.isFolder ? -1 : 1;
    return left.sortName.compare(right.sortName);
}

} // namespace

RowOrder::RowOrder(FileListModel::Column column, Qt::SortOrder direction, const FileKinds& kinds)
    : column_(column), direction_(direction) {
    if (column != FileListModel::kType)
        return;
    std::vector<QString> texts(kinds.Count());
    for (std::size_t kind = 0; kind < texts.size(); ++kind) {
        const std::string text = FromWindow(kinds.TypeText(static_cast<FileKinds::Number>(kind)));
        texts[kind] = ToWindow(base::ToUpper(text));
    }
    std::vector<QString> ordered = texts;
    std::ranges::sort(ordered);
    for (const QString& text : texts)
        typeRanks_.push_back(
            static_cast<std::size_t>(std::ranges::lower_bound(ordered, text) - ordered.begin()));
}

bool RowOrder::Precedes(const FileRow& left, const FileRow& right) const {
    int order = Compare(left, right);
    if (direction_ == Qt::DescendingOrder)
        order = -order;
    return (order != 0 ? order : OrderByName(left, right)) < 0;
}

int RowOrder::Compare(const FileRow& left, const FileRow& right) const {
    switch (column_) {
    case FileListModel::kSortSize:
        return Order(left.size, right.size);
    case FileListModel::kSortDate:
        return Order(left.modified, right.modified);
    case FileListModel::kType:
        return Order(typeRanks_[left.kind], typeRanks_[right.kind]);
    case FileListModel::kSortFile:
        return OrderByName(left, right);
    default: // all rows are in one folder, so the order of full paths is the order of names
        return left.sortName.compare(right.sortName);
    }
}

std::vector<std::uint32_t> PlacesInOrder(const std::vector<FileRow>& rows, const RowOrder& order,
                                         const std::function<bool()>& keepGoing) {
    const auto precedes = [&](std::uint32_t left, std::uint32_t right) {
        return order.Precedes(rows[left], rows[right]);
    };
    std::vector<std::uint32_t> places(rows.size());
    std::iota(places.begin(), places.end(), 0U);
    for (std::size_t start = 0; start < places.size(); start += kSlice) {
        const auto slice = places.begin() + static_cast<std::ptrdiff_t>(start);
        std::stable_sort(slice, slice + static_cast<std::ptrdiff_t>(std::min(kSlice, places.size() - start)),
                         precedes);
        if (!keepGoing())
            return {};
    }
    std::vector<std::uint32_t> merged(places.size());
    for (std::size_t width = kSlice; width < places.size(); width *= 2) {
        for (std::size_t start = 0; start < places.size(); start += 2 * width) {
            const std::size_t middle = std::min(start + width, places.size());
            const std::size_t end = std::min(middle + width, places.size());
            std::size_t left = start;
            std::size_t right = middle;
            for (std::size_t next = start; next < end; ++next) {
                const bool takeRight =
                    left == middle || (right < end && precedes(places[right], places[left]));
                merged[next] = places[takeRight ? right++ : left++];
                if ((next + 1) % kSlice == 0 && !keepGoing())
                    return {};
            }
        }
        places.swap(merged);
    }
    return places;
}

} // namespace ui
