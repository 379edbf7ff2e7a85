#pragma once

#include <QIcon>
#include <QString>

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ui {

/// The kinds of entry met so far, one per extension: each row of the file list names its kind by number, so
/// that type texts and icons are made once and not per row.
class FileKinds {
  public:
    using Number = std::uint32_t;

    /// `encryptedTypeText` is the type text of files with the extension "enc".
    void SetEncryptedTypeText(QString text) { encryptedTypeText_ = std::move(text); }

    /// Number of the kind of an entry named `name`.
    Number KindOf(std::string_view name, bool isFolder);

    const QString& TypeText(Number kind) const { return kinds_[kind].typeText; }

    const QIcon& Icon(Number kind) const { return kinds_[kind].icon; }

    std::size_t Count() const { return kinds_.size(); }

  private:
    struct Kind {
        QString typeText;
        QIcon icon;
    };

    Number Add(const std::string& key, std::string_view name, bool isFolder, std::size_t dot);

    QString encryptedTypeText_;
    std::vector<Kind> kinds_;
    std::unordered_map<std::string, Number> numbers_;
};

} // namespace ui
