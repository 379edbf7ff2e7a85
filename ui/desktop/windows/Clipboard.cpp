#include "platform/windows/Windows.h"
#include "ui/desktop/SystemShell.h"

#include <QMimeData>

#include <cstring>
#include <memory>

namespace ui {
namespace {

/// The clipboard, open for as long as this lives.
class OpenedClipboard {
  public:
    OpenedClipboard() : isOpen_(::OpenClipboard(nullptr) != 0) {}

    ~OpenedClipboard() {
        if (isOpen_)
            ::CloseClipboard();
    }

    OpenedClipboard(const OpenedClipboard&) = delete;
    OpenedClipboard& operator=(const OpenedClipboard&) = delete;

    bool IsOpen() const { return isOpen_; }

  private:
    bool isOpen_;
};

HGLOBAL BlockOf(const QByteArray& bytes) {
    const HGLOBAL block = ::GlobalAlloc(GHND, static_cast<SIZE_T>(bytes.size()));
    void* place = block == nullptr ? nullptr : ::GlobalLock(block);
    if (place == nullptr) {
        ::GlobalFree(block);
        return nullptr;
    }
    std::memcpy(place, bytes.constData(), static_cast<std::size_t>(bytes.size()));
    ::GlobalUnlock(block);
    return block;
}

QByteArray BytesOf(HGLOBAL block) {
    const void* place = block == nullptr ? nullptr : ::GlobalLock(block);
    if (place == nullptr)
        return {};
    const QByteArray bytes(static_cast<const char*>(place), static_cast<qsizetype>(::GlobalSize(block)));
    ::GlobalUnlock(block);
    return bytes;
}

/// The list of files is the one form in use: whatever else the data holds stays here, and nothing beside the
/// list can turn a copy into a move.
class WindowsClipboard final : public ClipboardStore {
  public:
    bool Put(QMimeData* data) override {
        const std::unique_ptr<QMimeData> owned(data);
        const OpenedClipboard clipboard;
        if (!clipboard.IsOpen() || ::EmptyClipboard() == 0)
            return false;
        const HGLOBAL block = BlockOf(owned->data(QLatin1String(kDropFilesMimeType)));
        if (block != nullptr && ::SetClipboardData(CF_HDROP, block) != nullptr)
            return true; // the clipboard owns the block now
        ::GlobalFree(block);
        return false;
    }

    const QMimeData* Data() override {
        data_.clear();
        if (::IsClipboardFormatAvailable(CF_HDROP) == 0)
            return &data_;
        const OpenedClipboard clipboard;
        if (!clipboard.IsOpen())
            return nullptr;
        data_.setData(QLatin1String(kDropFilesMimeType), BytesOf(::GetClipboardData(CF_HDROP)));
        return &data_;
    }

  private:
    QMimeData data_;
};

} // namespace

ClipboardStore& SystemClipboard() {
    static WindowsClipboard clipboard;
    return clipboard;
}

} // namespace ui
