#pragma once

#include "support/CabBuilder.h"
#include "support/RarBuilder.h"
#include "support/ZipBuilder.h"
#include "ui/WindowFixture.h"
#include "ui/archive/CabWindow.h"
#include "ui/archive/RarWindow.h"
#include "ui/archive/ZipWindow.h"

#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QTest>

#include <functional>
#include <memory>

enum class Format { kZip, kCab, kRar };

using Texts = std::vector<std::string>;

/// An archive window on archives on drive E:, driven as a user does.
class ArchiveWindows : public QObject, public ProgramWindow {
  protected:
    /// Runs once, when the window has begun to work.
    std::function<void()> onWork_;

    /// Runs whenever a label that this filters shows its text.
    std::function<void()> onPaint_;

    bool eventFilter(QObject* control, QEvent* event) override {
        if (event->type() == QEvent::EnabledChange && !static_cast<QWidget*>(control)->isEnabled() && onWork_)
            std::exchange(onWork_, nullptr)();
        if (event->type() == QEvent::Paint && onPaint_)
            onPaint_();
        return false;
    }

    /// A file, or with a last slash a folder, in an archive.
    struct Item {
        std::string name;
        std::string content;
    };

    void SetUp() override {
        ProgramWindow::SetUp();
        dir_.MakeFolder("out");
    }

    void TearDown() override {
        window_.reset();
        ProgramWindow::TearDown();
    }

    static std::string Extension(Format format) {
        return Texts{".zip", ".cab", ".rar"}[static_cast<std::size_t>(format)];
    }

    /// Makes E:\<name><extension>; slashes in names are the format's own.
    std::string Make(Format format, const std::string& name, const std::vector<Item>& items) {
        const std::string file = name + Extension(format);
        std::filesystem::create_directories(dir_.Host(file).parent_path());
        if (format == Format::kZip) {
            tests::ZipBuilder builder;
            for (const Item& item : items)
                builder.entries.push_back(tests::DeflatedEntry(item.name, item.content));
            dir_.MakeFile(file, builder.Bytes());
        } else if (format == Format::kRar) {
            tests::RarBuilder builder;
            for (const Item& item : items) {
                const bool isFolder = item.name.ends_with('/');
                builder.items.push_back(
                    {item.name.substr(0, item.name.size() - isFolder), item.content, isFolder});
            }
            dir_.MakeFile(file, builder.Bytes());
        } else {
            tests::CabBuilder builder;
            for (const Item& item : items) {
                std::string stored = item.name;
                if (stored.find('\\') == std::string::npos)
                    std::replace(stored.begin(), stored.end(), '/', '\\');
                builder.items.push_back({stored, item.content});
            }
            dir_.MakeFile(file, builder.Bytes());
        }
        return file;
    }

    /// Opens the window on files on E:, forward slashes in them, and waits until its rows can be used.
    void Open(Format format, const Texts& files) {
        std::string list;
        for (const std::string& file : files)
            list += tests::TestDir::Path(file) + "\r\n";
        if (format == Format::kZip) {
            auto zip = std::make_unique<ui::frmWinExtract>();
            zip->CurrentArchive = tests::TestDir::Path(files.at(0));
            zip->ListArchive();
            window_ = std::move(zip);
        } else if (format == Format::kCab) {
            window_ = std::make_unique<ui::frmextract>();
        } else {
            window_ = std::make_unique<ui::frmRarExtract>();
        }
        window_->ArchiveList = list;
        Get<QWidget>("chkDelete").installEventFilter(this);
        isListed_ = false;
        connect(List().model(), &QAbstractItemModel::modelReset, this, [this] { isListed_ = true; });
        window_->show();
        if (format == Format::kZip) {
            ASSERT_TRUE(QTest::qWaitForWindowExposed(window_.get()));
            return;
        }
        ASSERT_TRUE(QTest::qWaitFor([&] { return isListed_; }));
        ASSERT_TRUE(RowCount() == 0 || QTest::qWaitFor([&] { return !SelectedNames().empty(); }));
    }

    void Press(const char* button) { QTest::mouseClick(&Get<QPushButton>(button), Qt::LeftButton); }

    void Check(const char* box) { Get<QCheckBox>(box).click(); }

    /// Name of a row without the folder that it may bear.
    std::string NameIn(int row) override { return Cell(row, 7).substr(2); }

    QWidget& Window() override { return *window_; }

    QString Percentage() { return Get<QLabel>("lblProBar").text(); }

    static bool ExtractionDone() { return app::Application().ExtractionDone; }

    fakes::FakeFolderPicker picker_;
    std::unique_ptr<ui::ArchiveWindow> window_;

  private:
    bool isListed_ = false;
};

inline std::string FormatName(const testing::TestParamInfo<Format>& format) {
    return Texts{"Zip", "Cab", "Rar"}[static_cast<std::size_t>(format.param)];
}

/// A test that runs on the window of every format. Which of them differ, and how, stands in Ways.
class EveryArchiveWindow : public ArchiveWindows, public testing::WithParamInterface<Format> {
  protected:
    Format F() const { return GetParam(); }

    bool IsZip() const { return F() == Format::kZip; }

    bool IsCab() const { return F() == Format::kCab; }

    bool IsRar() const { return F() == Format::kRar; }

    /// Makes an archive of this format and opens its window.
    std::string OpenNew(const std::string& name, const std::vector<Item>& items) {
        const std::string file = Make(F(), name, items);
        Open(F(), {file});
        return file;
    }

    const char* Bar() const { return F() == Format::kRar ? "ProgressBar1" : "PicProBar"; }

    /// Where an entry of the archive `name` lies below the folder that it was extracted to.
    std::string In(const std::string& name, const std::string& entry) const {
        return IsCab() ? name + "/" + entry : entry;
    }
};
