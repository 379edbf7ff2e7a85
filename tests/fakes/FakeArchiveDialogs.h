#pragma once

#include "ui/explorer/commands/ArchiveDialogs.h"

#include <functional>
#include <string>
#include <vector>

namespace fakes {

/// Archive windows that only keep what they are asked to show.
class FakeArchiveDialogs : public ui::ArchiveDialogs {
  public:
    std::vector<std::string> shown;  ///< "ZIP " and so on with the archives
    std::function<void()> whileOpen; ///< runs while a window is open

    void ShowZip(const std::string& archives, QWidget*) override { Keep("ZIP " + archives); }

    void ShowCab(const std::string& archives, QWidget*) override { Keep("CAB " + archives); }

    void ShowRar(const std::string& archives, QWidget*) override { Keep("RAR " + archives); }

  private:
    void Keep(const std::string& what) {
        shown.push_back(what);
        if (whileOpen)
            whileOpen();
    }
};

} // namespace fakes
