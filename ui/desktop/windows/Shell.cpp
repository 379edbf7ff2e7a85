#include "platform/HostPath.h"
#include "platform/windows/Wide.h"
#include "platform/windows/Windows.h"
#include "ui/desktop/SystemShell.h"

#include <QImage>
#include <QPixmap>
#include <QWidget>

#include <array>
#include <shellapi.h>
#include <shlobj.h>

namespace ui {
namespace {

constexpr int kNotFound = 2;

HWND WindowOf(const QWidget* widget) {
    return widget == nullptr ? nullptr : reinterpret_cast<HWND>(widget->window()->winId());
}

bool IsAddress(const std::string& file) {
    return file.starts_with("https://") || file.starts_with("http://");
}

/// Asks about files of an extension; no disk is touched.
bool Ask(const std::string& extension, UINT what, SHFILEINFOW& information) {
    const std::wstring name = L"x." + platform::WideOf(extension);
    return ::SHGetFileInfoW(name.c_str(), FILE_ATTRIBUTE_NORMAL, &information, sizeof information,
                            what | SHGFI_USEFILEATTRIBUTES) != 0;
}

void AddIcon(QIcon& icon, const std::string& extension, UINT size) {
    SHFILEINFOW information{};
    if (!Ask(extension, SHGFI_ICON | size, information) || information.hIcon == nullptr)
        return;
    icon.addPixmap(QPixmap::fromImage(QImage::fromHICON(information.hIcon)));
    ::DestroyIcon(information.hIcon);
}

/// Shows the folder that the dialog starts at.
int CALLBACK SelectStart(HWND dialog, UINT message, LPARAM, LPARAM start) {
    if (message == BFFM_INITIALIZED)
        ::SendMessageW(dialog, BFFM_SETSELECTIONW, TRUE, start);
    return 0;
}

} // namespace

int ShellOpen(const std::string& file, const std::string& parameters, const std::string& verb) {
    const std::string host = IsAddress(file) ? file : platform::HostPathOf(file);
    if (host.empty())
        return kNotFound;
    const std::wstring root = platform::WideOf(IsAddress(file) ? "" : host.substr(0, 2) + "\\");
    const HINSTANCE instance = ::ShellExecuteW(
        ::GetDesktopWindow(), platform::WideOf(verb).c_str(), platform::WideOf(host).c_str(),
        platform::WideOf(parameters).c_str(), root.empty() ? nullptr : root.c_str(), SW_SHOWNORMAL);
    return static_cast<int>(reinterpret_cast<INT_PTR>(instance));
}

bool ShellShowsProperties(const std::string& path, QWidget* ownerWindow) {
    const std::wstring file = platform::WideOf(platform::HostPathOf(path));
    SHELLEXECUTEINFOW record{};
    record.cbSize = sizeof record;
    record.fMask = SEE_MASK_INVOKEIDLIST | SEE_MASK_NOCLOSEPROCESS | SEE_MASK_FLAG_NO_UI;
    record.hwnd = WindowOf(ownerWindow);
    record.lpVerb = L"properties";
    record.lpFile = file.c_str();
    record.lpParameters = L"";
    record.lpDirectory = L"";
    ::ShellExecuteExW(&record);
    return reinterpret_cast<INT_PTR>(record.hInstApp) > 32;
}

std::optional<std::string> ShellPickFolder(const std::string& prompt, const std::string& start,
                                           QWidget* parent) {
    const std::wstring title = platform::WideOf(prompt);
    const std::wstring startFolder = platform::WideOf(platform::HostPathOf(start));
    BROWSEINFOW request{};
    request.hwndOwner = WindowOf(parent);
    request.lpszTitle = title.c_str();
    request.ulFlags = BIF_RETURNONLYFSDIRS | BIF_NEWDIALOGSTYLE;
    if (!startFolder.empty()) {
        request.lpfn = SelectStart;
        request.lParam = reinterpret_cast<LPARAM>(startFolder.c_str());
    }
    const PIDLIST_ABSOLUTE chosen = ::SHBrowseForFolderW(&request);
    if (chosen == nullptr)
        return "";
    std::array<wchar_t, MAX_PATH> folder{};
    const bool hasPath = ::SHGetPathFromIDListW(chosen, folder.data()) != 0;
    ::CoTaskMemFree(chosen);
    return hasPath ? platform::PathFromHost(platform::Utf8OfWide(folder.data())) : "";
}

QIcon ShellIcon(const std::string& extension) {
    QIcon icon;
    AddIcon(icon, extension, SHGFI_SMALLICON);
    AddIcon(icon, extension, SHGFI_LARGEICON);
    return icon;
}

std::string ShellTypeName(const std::string& extension) {
    SHFILEINFOW information{};
    return Ask(extension, SHGFI_TYPENAME, information) ? platform::Utf8OfWide(information.szTypeName) : "";
}

} // namespace ui
