#pragma once

#include "fakes/InUse.h"
#include "ui/common/FolderPicker.h"
#include "ui/desktop/DocumentOpener.h"

#include <deque>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace fakes {

/// A folder picker for tests: it returns the given folders one after another, then "cancelled".
class FakeFolderPicker : public InUse<ui::FolderPicker, ui::SetFolderPicker> {
  public:
    std::deque<std::string> folders;
    std::vector<std::string> prompts;

    std::string Pick(const std::string& prompt, const std::string&, QWidget*) override {
        prompts.push_back(prompt);
        if (folders.empty())
            return {};
        std::string folder = std::move(folders.front());
        folders.pop_front();
        return folder;
    }
};

/// An opener that only keeps what it is asked to open.
class FakeDocumentOpener : public InUse<ui::DocumentOpener, ui::SetDocumentOpener> {
  public:
    std::vector<std::string> opened;
    std::vector<std::string> verbs;
    std::function<void()> onOpen; ///< runs while a document is being opened

    int Open(const std::string& file, const std::string&, const std::string& verb) override {
        opened.push_back(file);
        verbs.push_back(verb);
        if (onOpen)
            onOpen();
        return 42;
    }
};

} // namespace fakes
