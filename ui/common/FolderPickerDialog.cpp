#include "ui/common/FolderPickerDialog.h"

#include "app/Messages.h"
#include "app/TextIds.h"
#include "app/Texts.h"
#include "platform/Files.h"
#include "platform/HostPath.h"
#include "ui/common/FolderTree.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

namespace ui {
namespace {

constexpr QSize kDefaultSize{440, 480};

QString Caption(std::uint32_t id) {
    return QString::fromStdString(app::LoadText(id));
}

/// What was typed, as a path of this program: trimmed, slashes turned round, a host path converted, no last
/// backslash.
std::string Typed(const QString& text) {
    std::string path = text.trimmed().toStdString();
    if (path.starts_with('/'))
        path = platform::PathFromHost(path);
    for (char& c : path)
        c = c == '/' ? '\\' : c;
    if (path.size() == 2 && path[1] == ':')
        path += '\\';
    while (path.size() > 3 && path.back() == '\\')
        path.pop_back();
    return path;
}

/// Whether `name` is one component of a path, as every system allows it.
bool IsOneName(const std::string& name) {
    return name != "." && name != ".." && name.find_first_of("\\/:*?\"<>|") == std::string::npos;
}

} // namespace

FolderPickerDialog::FolderPickerDialog(const std::string& prompt, const std::string& start, QWidget* parent)
    : QDialog(parent), folders_(new FolderTree(this)), path_(new QLineEdit(this)),
      tree_(new QTreeView(this)) {
    setObjectName(QStringLiteral("BrowseForFolder"));
    Build(prompt);
    connect(tree_, &QTreeView::expanded, folders_, &FolderTree::Read);
    connect(tree_->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& index) {
                path_->setText(QString::fromStdString(folders_->PathOf(index)));
            });
    // A folder is taken with a double-click as everywhere; Enter belongs to the default button.
    connect(tree_, &QTreeView::doubleClicked, this, &FolderPickerDialog::accept);
    Show(start);
}

void FolderPickerDialog::Build(const std::string& prompt) {
    setWindowTitle(QString::fromStdString(prompt));
    path_->setObjectName(QStringLiteral("path"));
    path_->setAccessibleName(windowTitle());
    tree_->setObjectName(QStringLiteral("folders"));
    tree_->setAccessibleName(Caption(IDS_MY_COMPUTER));
    tree_->setModel(folders_);
    tree_->header()->hide();
    tree_->setUniformRowHeights(true);
    tree_->setExpandsOnDoubleClick(false);

    auto* buttons = new QHBoxLayout;
    const auto add = [&](const char* name, std::uint32_t caption, void (FolderPickerDialog::*command)()) {
        auto* button = new QPushButton(Caption(caption), this);
        button->setObjectName(QLatin1String(name));
        connect(button, &QPushButton::clicked, this, command);
        buttons->addWidget(button);
        return button;
    };
    add("newFolder", IDS_NEW_FOLDER, &FolderPickerDialog::MakeFolder)->setAutoDefault(false);
    buttons->addStretch(1);
    add("ok", IDS_OK, &FolderPickerDialog::accept)->setDefault(true);
    add("cancel", IDS_CANCEL, &FolderPickerDialog::reject);

    auto* rows = new QVBoxLayout(this);
    rows->addWidget(path_);
    rows->addWidget(tree_, 1);
    rows->addLayout(buttons);
    resize(kDefaultSize);
    tree_->setFocus();
}

void FolderPickerDialog::Show(const std::string& path) {
    QModelIndex index = folders_->Find(path);
    if (!index.isValid())
        index = folders_->index(0, 0);
    tree_->setCurrentIndex(index);
    tree_->expand(index);
    tree_->scrollTo(index, QAbstractItemView::PositionAtCenter);
}

void FolderPickerDialog::MakeFolder() {
    const std::string parent = Typed(path_->text());
    QString caption = Caption(IDS_NEW_FOLDER);
    const auto name = app::Messages().Ask(app::WithUserName(app::LoadText(IDS_ASK_FOLDER_NAME)),
                                          caption.remove(QLatin1Char('&')).toStdString(), false);
    if (!name || name->empty())
        return;
    if (!IsOneName(*name)) {
        app::ShowError(base::SystemError{base::kErrorInvalidName}.Description());
        return;
    }
    const std::string made = (parent.ends_with('\\') ? parent : parent + '\\') + *name;
    if (const base::SystemError error = platform::CreateFolder(made)) {
        app::ShowError(error.Description());
        return;
    }
    folders_->ReadAgain(folders_->Find(parent));
    Show(made);
}

void FolderPickerDialog::accept() {
    const std::string path = Typed(path_->text());
    if (!platform::FolderExists(path)) {
        app::ShowText(IDS_NO_SUCH_FOLDER, IDS_WARNING_TITLE, app::kMessageWarning);
        path_->setFocus();
        path_->selectAll();
        return;
    }
    folder_ = path;
    QDialog::accept();
}

} // namespace ui
