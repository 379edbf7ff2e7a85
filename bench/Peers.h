#pragma once

#include "Compare.h"

#include <string>
#include <vector>

namespace bench {

/// Makes a folder anew.
void EmptyFolder(const std::string& folder);

/// A program with its arguments as one side; `cleaned` is emptied before each run.
Side ProgramSide(const std::string& name, const std::vector<std::string>& words,
                 const std::string& cleaned = "");

/// Of the sides whose programs are installed, the one that is quickest in the best of three runs each.
Side QuickestOf(const std::vector<Side>& peers);

} // namespace bench
