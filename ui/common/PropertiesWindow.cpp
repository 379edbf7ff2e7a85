#include "ui/common/PropertiesWindow.h"

#include "app/TextIds.h"
#include "app/Texts.h"
#include "base/FileName.h"
#include "platform/Drives.h"
#include "platform/Files.h"
#include "ui/desktop/ShellInfo.h"

#include <QDateTime>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QFrame>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>

namespace ui {
namespace {

constexpr std::size_t kCountedAtOnce = 200;
constexpr std::size_t kDriveRootLength = 3;
constexpr int kIconSize = 32;
constexpr int kMargin = 16;
constexpr int kSmallestWidth = 380;

QString Text(std::uint32_t id) {
    return QString::fromStdString(app::LoadText(id)).remove(QLatin1Char('&'));
}

QString SizeText(std::uint64_t bytes) {
    const QLocale locale;
    const QString exact = Text(IDS_PROPERTY_BYTES)
                              .replace(QLatin1String("%n"), locale.toString(static_cast<qulonglong>(bytes)));
    return bytes < 1000
               ? exact
               : locale.formattedDataSize(static_cast<qint64>(bytes)) + QLatin1String(" (") + exact + u')';
}

QString ModifiedText(platform::FileTime lastWrite) {
    const platform::SystemTime time =
        platform::FileTimeToSystemTime(platform::FileTimeToLocalFileTime(lastWrite));
    return QLocale().toString(
        QDateTime(QDate(time.year, time.month, time.day), QTime(time.hour, time.minute, time.second)),
        QLocale::LongFormat);
}

QString AttributesText(std::uint32_t attributes) {
    QStringList words;
    if ((attributes & platform::kAttributeReadOnly) != 0)
        words << Text(IDS_PROPERTY_READ_ONLY);
    if ((attributes & platform::kAttributeHidden) != 0)
        words << Text(IDS_PROPERTY_HIDDEN);
    return words.isEmpty() ? QStringLiteral("–") : words.join(QLatin1String(", "));
}

std::string TypeTextOf(const std::string& name) {
    const std::size_t dot = name.rfind('.');
    return FileTypeName(dot == std::string::npos ? std::string() : name.substr(dot));
}

} // namespace

PropertiesWindow::PropertiesWindow(const std::string& path, QWidget* parent)
    : QDialog(parent),
      path_(path.size() > kDriveRootLength && path.ends_with('\\') ? path.substr(0, path.size() - 1) : path),
      rows_(new QFormLayout), count_(path_) {
    const bool isRoot = path_.size() <= kDriveRootLength;
    const std::string name(isRoot ? path_ : base::LastComponent(path_));
    const std::uint32_t attributes = platform::GetFileAttributes(path_).value_or(0);
    const bool isFolder = (attributes & platform::kAttributeDirectory) != 0;
    setObjectName(QStringLiteral("properties"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(Text(IDS_PROPERTIES) + QLatin1String(": ") + QString::fromStdString(name));
    setMinimumWidth(kSmallestWidth);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    column->setSpacing(kMargin);
    const QString type = isFolder ? Text(IDS_PROPERTY_FOLDER_TYPE) : QString::fromStdString(TypeTextOf(name));
    AddHeading(QString::fromStdString(name), FileIcon(path_, isFolder), type);
    AddRow(IDS_PROPERTY_TYPE, type, "type");
    if (!isRoot)
        AddRow(IDS_PROPERTY_LOCATION, QString::fromStdString(std::string(base::FolderOf(path_))), "location");
    size_ = AddRow(IDS_PROPERTY_SIZE, {}, "size");
    if (isFolder)
        content_ = AddRow(IDS_PROPERTY_CONTENT, {}, "content");
    if (isRoot)
        AddDriveSpace();
    if (const auto entry = platform::FindEntry(path_))
        AddRow(IDS_PROPERTY_MODIFIED, ModifiedText(entry->lastWrite), "modified");
    AddRow(IDS_PROPERTY_ATTRIBUTES, AttributesText(attributes), "attributes");
    rows_->setHorizontalSpacing(kMargin);
    column->addLayout(rows_);
    column->addStretch(1);
    auto* buttons = new QDialogButtonBox(this);
    buttons->addButton(QString::fromStdString(app::LoadText(IDS_CLOSE)), QDialogButtonBox::RejectRole);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::close);
    column->addWidget(buttons);

    connect(&counting_, &QTimer::timeout, this, &PropertiesWindow::CountMore);
    CountMore();
}

void PropertiesWindow::AddHeading(const QString& name, const QIcon& icon, const QString& type) {
    auto* picture = new QLabel(this);
    picture->setPixmap(icon.pixmap(QSize(kIconSize, kIconSize), devicePixelRatioF()));
    picture->setAccessibleName(type);
    auto* title = new QLabel(name, this);
    title->setObjectName(QStringLiteral("name"));
    title->setTextFormat(Qt::PlainText);
    title->setWordWrap(true);
    QFont font = title->font();
    font.setWeight(QFont::DemiBold);
    title->setFont(font);
    auto* heading = new QHBoxLayout;
    heading->setSpacing(kMargin);
    heading->addWidget(picture);
    heading->addWidget(title, 1);
    static_cast<QVBoxLayout*>(layout())->addLayout(heading);
    auto* line = new QFrame(this);
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Sunken);
    layout()->addWidget(line);
}

QLabel* PropertiesWindow::AddRow(std::uint32_t captionId, const QString& value, const char* name) {
    auto* label = new QLabel(value, this);
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setAccessibleName(Text(captionId));
    rows_->addRow(Text(captionId), label);
    return label;
}

void PropertiesWindow::AddDriveSpace() {
    const auto space = platform::GetDriveSpace(path_.substr(0, 1) + ":\\");
    if (!space)
        return;
    const std::uint64_t cluster = std::uint64_t{space->sectorsPerCluster} * space->bytesPerSector;
    const auto figure = [&](std::uint64_t clusters) {
        return QLocale().formattedDataSize(static_cast<qint64>(clusters * cluster));
    };
    AddRow(IDS_PROPERTY_FREE_SPACE,
           Text(IDS_X_OF_Y)
               .replace(QLatin1String("%x"), figure(space->freeClusters))
               .replace(QLatin1String("%y"), figure(space->totalClusters)),
           "free");
}

void PropertiesWindow::CountMore() {
    const bool isComplete = !count_.CountSome(kCountedAtOnce);
    ShowCounts(isComplete);
    if (isComplete)
        counting_.stop();
    else if (!counting_.isActive())
        counting_.start(0);
}

void PropertiesWindow::ShowCounts(bool isComplete) {
    const QLocale locale;
    const QString more = isComplete ? QString() : QStringLiteral(" ...");
    size_->setText(SizeText(count_.Bytes()) + more);
    if (content_ == nullptr)
        return;
    content_->setText(
        Text(IDS_PROPERTY_COUNTS)
            .replace(QLatin1String("%x"), locale.toString(static_cast<qulonglong>(count_.Files())))
            .replace(QLatin1String("%y"), locale.toString(static_cast<qulonglong>(count_.Folders()))) +
        more);
}

} // namespace ui
