#pragma once

#include <string>
#include <vector>

namespace ui {

/// One opening of entries from C:\Pellarion\Temp. What is put there is written down in the program's working
/// folder before and after, so that EmptyOpenFolder can take it away again, whatever happens in between.
class OpenFolder {
  public:
    /// Makes the folder.
    OpenFolder();

    /// Its path, with a last backslash.
    static std::string Path();

    /// This file or folder is about to be written; nothing for an empty path.
    void Expect(const std::string& path);

    /// Call when all are expected, and again when they have been written.
    void Begin();
    void End();

  private:
    struct Expected {
        std::string path;
        std::string before; ///< its stamp before this opening
    };

    std::vector<Expected> expected_;
};

/// Deletes what openings have put into the folder, in this run and in earlier ones. A file that has been
/// changed since belongs to the user and stays; one that cannot be deleted yet is tried again the next time.
void EmptyOpenFolder();

} // namespace ui
