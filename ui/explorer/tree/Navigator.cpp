#include "ui/explorer/tree/Navigator.h"

#include "app/ApplicationState.h"
#include "app/Messages.h"
#include "app/TextIds.h"
#include "app/Texts.h"
#include "platform/Files.h"
#include "ui/common/WindowTexts.h"
#include "ui/explorer/list/FileListModel.h"
#include "ui/explorer/tree/FolderTreeModel.h"
#include "ui/explorer/tree/TreeView.h"

#include <exception>

namespace ui {

namespace {

constexpr std::size_t kDriveRootLength = 3;

std::string WithLastBackslash(const std::string& key) {
    return key.ends_with('\\') ? key : key + '\\';
}

} // namespace

Navigator::Navigator(const Parts& parts, FolderMarks marks, QObject* parent)
    : QObject(parent), parts_(parts), marks_(std::move(marks)) {
    const auto keyOf = [this](const QModelIndex& node) { return parts_.nodes->KeyOf(node); };
    connect(parts_.tree, &TreeView::NodeClicked, this, [this, keyOf](const QModelIndex& node) {
        Visit({keyOf(node), true});
    });
    connect(parts_.tree, &TreeView::NodeReached, this, [this, keyOf](const QModelIndex& node) {
        Visit({keyOf(node), false});
    });
    connect(parts_.tree, &TreeView::RefreshPressed, this, &Navigator::RefreshNode);
    connect(parts_.nodes, &FolderTreeModel::NodeChecked, this, &Navigator::NodeChecked);
    // After the click has been dealt with, since a message lets others in.
    connect(parts_.nodes, &FolderTreeModel::RootChecked, this, &Navigator::RootChecked, Qt::QueuedConnection);
}

void Navigator::Run(const std::function<void()>& work) {
    ++busy_;
    work();
    --busy_;
    if (IsBusy())
        return;
    while (waiting_) {
        const Click next = *waiting_;
        waiting_.reset();
        cutShort_ = false;
        ++busy_;
        VisitNow(next);
        --busy_;
    }
    cutShort_ = false;
    emit BecameIdle();
}

void Navigator::CutShort() {
    waiting_.reset();
    cutShort_ = IsBusy();
}

void Navigator::Visit(const Click& click) {
    if (IsBusy()) {
        waiting_ = click;
        cutShort_ = true;
        return;
    }
    Run([&] { VisitNow(click); });
}

void Navigator::VisitNow(const Click& click) {
    try {
        emit SpaceWanted(true);
        if (click.key == kRootKey)
            OpenRoot();
        else
            OpenNode(click);
    } catch (const std::exception& error) {
        app::ShowError(error.what());
        parts_.files->Clear();
    }
    parts_.tree->setFocus();
}

void Navigator::OpenRoot() {
    const std::string key(kRootKey);
    parts_.files->Clear();
    SetLocation(std::string(kMyComputer));
    parts_.nodes->SortChildren(key);
    RefreshDrives();
    parts_.tree->expand(parts_.nodes->IndexOf(key));
    Select(key);
    app::Application().CurrentPath.clear();
    app::Application().CurrentNodeKey = key;
}

void Navigator::OpenNode(const Click& click) {
    if (!parts_.nodes->Contains(click.key))
        return;
    const std::string path = WithLastBackslash(click.key);
    if (!platform::FolderExists(path.substr(0, kDriveRootLength))) {
        app::ShowText(IDS_FOLDER_NOT_REACHED, IDS_WARNING_TITLE, app::kMessageWarning);
        parts_.files->Clear();
        return;
    }
    if (!platform::FolderExists(path)) {
        RemoveNode(click.key);
        parts_.files->Clear();
        return;
    }
    SetLocation(click.key);
    if (click.expand)
        ShowFolder(path, click.key);
    else
        ListFolder(path, click.key);
    parts_.nodes->SortChildren(click.key);
    app::Application().CurrentPath = path;
    app::Application().CurrentNodeKey = click.key;
}

void Navigator::RemoveNode(const std::string& key) {
    const QModelIndex node = parts_.nodes->IndexOf(key);
    if (!node.isValid())
        return;
    const QModelIndex above = node.parent();
    if (parts_.tree->currentIndex() == node)
        parts_.tree->setCurrentIndex(above);
    parts_.nodes->RemoveNode(key);
}

void Navigator::ClickNode(const std::string& key) {
    Visit({key, true});
}

void Navigator::OpenFolder(const std::string& path) {
    if (!parts_.nodes->Contains(path))
        AddFolderNode(app::Application().CurrentNodeKey, path);
    ClickNode(path);
}

void Navigator::AddFolderNode(const std::string& parentKey, const std::string& path) {
    const std::string name = path.substr(path.rfind('\\') + 1);
    parts_.nodes->AddNodes(parentKey, FolderTreeModel::NodeKind::kFolder,
                           {{path, name, marks_.IsMarked(path)}});
}

void Navigator::GoUp() {
    const QModelIndex node = parts_.tree->currentIndex();
    if (!node.isValid() || !node.parent().isValid() || parts_.nodes->TextOf(node) == QLatin1String("Desktop"))
        return;
    const QModelIndex above = node.parent();
    if (parts_.nodes->TextOf(above) != ToWindow(kMyComputer) && location_.isEmpty())
        return;
    ClickNode(parts_.nodes->KeyOf(above));
}

void Navigator::Refresh() {
    if (const std::string key = SelectedKey(); !key.empty())
        ClickNode(key);
}

void Navigator::RefreshNode() {
    const std::string key = SelectedKey();
    if (key.empty())
        return;
    if (IsBusy() || key == kRootKey) {
        ClickNode(key);
        return;
    }
    ShowFolder(WithLastBackslash(key), key);
    emit SpaceWanted(false);
}

std::string Navigator::SelectedKey() const {
    const QModelIndex node = parts_.tree->currentIndex();
    return node.isValid() ? parts_.nodes->KeyOf(node) : std::string();
}

void Navigator::Select(const std::string& key) {
    const QModelIndex node = parts_.nodes->IndexOf(key);
    if (node.isValid())
        parts_.tree->setCurrentIndex(node);
}

void Navigator::SetLocation(const std::string& location) {
    location_ = ToWindow(location);
    emit LocationChanged(location_);
}

void Navigator::NodeChecked(const QString& key, bool isChecked) {
    const std::string path = FromWindow(key);
    const std::string entry = FolderMarks::EntryOf(path);
    if (isChecked)
        marks_.AddMark(entry);
    else
        marks_.RemoveMark(entry);
    Select(path);
}

void Navigator::RootChecked() {
    const std::string caption = FromWindow(parts_.nodes->TextOf(parts_.nodes->IndexOf(kRootKey)));
    const std::string text =
        app::LoadText(IDS_MARKING) + " \"" + caption + "\" " + app::LoadText(IDS_MARK_NOT_POSSIBLE);
    app::Messages().Show({IDS_MARKING, text, app::kMessageWarning, app::LoadText(IDS_MARK_TITLE)});
}

} // namespace ui
