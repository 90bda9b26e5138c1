#include "DeskHerald/program_search.h"

#include <vector>

namespace zk::companion {
namespace {

bool IsFullPath(const Text& path) {
    return (path.size() >= 3 && path[1] == u':' && path[2] == u'\\') || path.starts_with(u"\\\\");
}

bool IsFile(FileApi& os, const Text& path) {
    const std::uint32_t attributes = os.GetFileAttributesW(path);
    return attributes != InvalidFileAttributes && (attributes & FileAttributeDirectory) == 0;
}

std::vector<Text> SearchFolders(TextApi& os) {
    std::vector<Text> folders = {os.ExpandEnvironmentStringsW(u"%SystemRoot%\\System32"),
                                 os.ExpandEnvironmentStringsW(u"%SystemRoot%")};
    const Text path = os.ExpandEnvironmentStringsW(u"%PATH%");
    if (path == u"%PATH%") return folders;
    for (std::size_t start = 0; start <= path.size();) {
        const std::size_t end = std::min(path.find(u';', start), path.size());
        Text folder = path.substr(start, end - start);
        if (IsFullPath(folder)) folders.push_back(std::move(folder));
        start = end + 1;
    }
    return folders;
}

std::optional<Text> FindFile(Os& os, const Text& name) {
    if (name.empty()) return std::nullopt;
    const bool hasExtension = name.find(u'.', name.find_last_of(u'\\') + 1) != Text::npos;
    const Text file = hasExtension ? name : name + u".exe";
    if (IsFullPath(name)) return IsFile(os, file) ? std::optional(file) : std::nullopt;
    if (name.find_first_of(u"\\/:") != Text::npos) return std::nullopt;  // relative to where?
    for (Text folder : SearchFolders(os)) {
        if (!folder.ends_with(u'\\')) folder += u'\\';
        if (IsFile(os, folder + file)) return folder + file;
    }
    return std::nullopt;
}

}  // namespace

std::optional<ProgramCommand> TryFindProgram(Os& os, const Text& line) {
    const std::size_t first = line.find_first_not_of(u' ');
    if (first == Text::npos) return std::nullopt;
    std::vector<std::pair<Text, Text>> candidates;  // the program's part and the rest
    if (line[first] == u'"') {
        const std::size_t close = line.find(u'"', first + 1);
        if (close == Text::npos) return std::nullopt;
        candidates.emplace_back(line.substr(first + 1, close - first - 1), line.substr(close + 1));
    } else {
        for (std::size_t end = line.size(); end > first; end = line.rfind(u' ', end - 1)) {
            if (end == Text::npos) break;
            candidates.emplace_back(line.substr(first, end - first), line.substr(end));
        }
    }
    for (const auto& [name, rest] : candidates) {
        if (const auto found = FindFile(os, name)) {
            return ProgramCommand{*found, u"\"" + *found + u"\"" + rest};
        }
    }
    return std::nullopt;
}

}  // namespace zk::companion
