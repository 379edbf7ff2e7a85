#pragma once

#include "fakes/InUse.h"
#include "ui/common/ShowProperties.h"
#include "ui/desktop/ClipboardFiles.h"

#include <QMimeData>

#include <memory>
#include <string>
#include <vector>

namespace fakes {

/// A clipboard of the test's own, which can also be out of reach.
class FakeClipboard : public InUse<ui::ClipboardStore, ui::SetClipboardStore> {
  public:
    bool isReachable = true;
    std::unique_ptr<QMimeData> held;

    /// What another program would put there.
    void Hold(const char* format, const QByteArray& bytes) {
        held = std::make_unique<QMimeData>();
        held->setData(QLatin1String(format), bytes);
    }

    std::string Bytes(const char* format) const {
        return held ? held->data(QLatin1String(format)).toStdString() : std::string();
    }

    bool Put(QMimeData* data) override {
        std::unique_ptr<QMimeData> given(data);
        if (isReachable)
            held = std::move(given);
        return isReachable;
    }

    const QMimeData* Data() override { return isReachable ? held.get() : nullptr; }
};

/// A properties viewer that only keeps what it is asked to show.
class FakeProperties : public InUse<ui::PropertiesViewer, ui::SetPropertiesViewer> {
  public:
    std::vector<std::string> shown;
    int result = 42;

    int Show(const std::string& path, QWidget*) override {
        shown.push_back(path);
        return result;
    }
};

} // namespace fakes
