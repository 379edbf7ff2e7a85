#include "archive/rar/RarVolumes.h"

#include <algorithm>
#include <cassert>

namespace rar {

namespace {

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

/// Adds one to the number that ends at `end`.
std::string Increased(std::string path, std::size_t end) {
    std::size_t at = end;
    while (at > 0 && path[at - 1] == '9')
        path[--at] = '0';
    if (at > 0 && IsDigit(path[at - 1]))
        ++path[at - 1];
    else
        path.insert(at, 1, '1');
    return path;
}

std::string NextByEnding(std::string path, std::size_t dot) {
    const std::size_t digits = path.size() - 2;
    if (path.size() - dot != 4)
        return "";
    if (!IsDigit(path[digits]) || !IsDigit(path[digits + 1]))
        return path.replace(digits, 2, "00");
    if (path.substr(digits) == "99") {
        ++path[digits - 1];
        return path.replace(digits, 2, "00");
    }
    return Increased(path, path.size());
}

} // namespace

std::string NextVolumePath(const std::string& path, bool oldNumbering) {
    const std::size_t nameStart = path.find_last_of('\\') + 1;
    const std::size_t dot = path.find_last_of('.');
    if (oldNumbering)
        return dot == path.npos || dot < nameStart ? "" : NextByEnding(path, dot);
    std::size_t end = dot == path.npos || dot < nameStart ? path.size() : dot;
    while (end > nameStart && !IsDigit(path[end - 1]))
        --end;
    return end == nameStart ? "" : Increased(path, end);
}

std::shared_ptr<platform::FileReader> RarVolumes::Volume(std::size_t number) {
    if (openFile_ && openNumber_ == number)
        return openFile_;
    assert(number <= paths_.size());
    if (number == paths_.size())
        paths_.push_back(NextVolumePath(paths_.back(), oldNumbering_));
    if (paths_[number].empty())
        return nullptr;
    base::SystemError error;
    openFile_ = open_(paths_[number], error);
    openNumber_ = number;
    return openFile_;
}

} // namespace rar
