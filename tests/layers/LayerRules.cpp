// SPDX-License-Identifier: GPL-3.0-or-later
#include "LayerRules.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <map>
#include <optional>
#include <regex>
#include <string_view>

namespace {

// What a layer must never see of Qt.
enum class Widgets { Allowed, Forbidden };

struct Layer {
    std::string_view folder;
    int rank;  // a file may include what has a lower rank, and its own target
    Widgets widgets;
    std::string_view wayOut;
};

constexpr std::string_view LibraryWayOut =
    "a library knows nothing of the program: take what is needed as an argument and report through CObjProgress";
constexpr std::string_view ToolWayOut =
    "a tool talks upward through ToolHost and FrameMessages.h; what two tools share belongs to canvas or core";
constexpr std::string_view BeautyWayOut =
    "what the beauty tools share knows none of them: let the tool say it in a virtual";

// The table of layers, from the top. Longer folder names stand before the shorter ones that contain them.
constexpr std::array Layers{
    Layer{"share", 11, Widgets::Allowed, ""},
    Layer{"app", 10, Widgets::Allowed, ""},
    Layer{"save", 9, Widgets::Allowed,
          "save takes what it needs from its caller: a value or a callback in SaveRequest"},
    Layer{"settings", 9, Widgets::Allowed, "settings takes what it needs from its caller: an address, a function"},
    Layer{"tools", 8, Widgets::Allowed, ToolWayOut},
    Layer{"effects", 8, Widgets::Allowed, ToolWayOut},
    Layer{"frames", 8, Widgets::Allowed, ToolWayOut},
    Layer{"beauty/BrushLogic", 5, Widgets::Forbidden, BeautyWayOut},
    Layer{"beauty/WarpField", 5, Widgets::Forbidden, BeautyWayOut},
    Layer{"beauty/BrushWnd", 7, Widgets::Allowed, BeautyWayOut},
    Layer{"beauty", 8, Widgets::Allowed, ToolWayOut},
    Layer{"text", 8, Widgets::Allowed, ToolWayOut},
    Layer{"canvas/logic", 4, Widgets::Forbidden, "what logic objects share knows no window: hand sizes in as numbers"},
    Layer{"canvas", 6, Widgets::Allowed, "let the tool override an operation of CBaseWnd, or ask through ToolHost"},
    Layer{"platform/skin", 5, Widgets::Allowed,
          "a skinned window reports by OnNotify; whoever opened it knows the rest and hands values in"},
    Layer{"telemetry/http", 3, Widgets::Forbidden, "the client knows requests only; who asks knows what is sent"},
    Layer{"telemetry", 4, Widgets::Forbidden, "take the value as an argument; the caller counts and reports"},
    Layer{"core", 3, Widgets::Forbidden, "core holds state and steps only: hand the value in, or take a callback"},
    Layer{"platform", 2, Widgets::Forbidden, "platform serves all above: take a callback or post a message instead"},
    Layer{"libs/pcdsp", 1, Widgets::Forbidden, LibraryWayOut},
    Layer{"libs/pceffect", 0, Widgets::Forbidden, LibraryWayOut},
    Layer{"libs/pcfile", 1, Widgets::Forbidden, LibraryWayOut},
    Layer{"libs/crashreport", 1, Widgets::Forbidden, LibraryWayOut},
    Layer{"libs/base", -1, Widgets::Forbidden, "libs/base is the ground: it uses the standard library alone"},
};

constexpr std::string_view LogicWayOut =
    "a logic object may use canvas/logic, core, platform and libs; hand the view size in as a number instead";
constexpr int HighestRankForLogic = 3;
// Made for logic objects, though they stand above core.
constexpr std::array<std::string_view, 3> SharedLogic{"canvas/logic", "beauty/BrushLogic", "beauty/WarpField"};

bool IsSharedLogic(std::string_view folder) {
    return std::find(SharedLogic.begin(), SharedLogic.end(), folder) != SharedLogic.end();
}

bool IsUnder(std::string_view path, std::string_view folder) {
    return path.size() > folder.size() && path.starts_with(folder) && path[folder.size()] == '/';
}

const Layer* LayerOf(std::string_view path) {
    const auto found =
        std::find_if(Layers.begin(), Layers.end(), [&](const Layer& l) { return IsUnder(path, l.folder); });
    return found == Layers.end() ? nullptr : &*found;
}

// Folders of which each folder inside is a tool of its own.
constexpr std::array<std::string_view, 3> ToolFolders{"tools", "tools/geometry", "beauty"};

// The target that a file belongs to: its layer's folder, and for a tool the folder of the tool. What lies beside the
// folders of tools is shared by them and belongs to nobody's target but its own.
std::string TargetOf(std::string_view path, const Layer& layer) {
    std::string_view target = layer.folder;
    for (const std::string_view folder : ToolFolders) {
        if (!IsUnder(path, folder)) continue;
        const auto slash = path.find('/', folder.size() + 1);
        target = slash == path.npos ? folder : path.substr(0, slash);
    }
    return std::string(target);
}

bool IsTestCode(std::string_view path) {
    return IsUnder(path, "tests") || IsUnder(path, "benchmarks") || IsUnder(path, "fuzz") || IsUnder(path, "tour");
}

bool IsLogic(const SourceFile& file) {
    const std::string stem = std::filesystem::path(file.path).stem().string();
    return stem.ends_with("Logic") && !IsTestCode(file.path);
}

struct Include {
    std::string name;
    bool quoted = false;
    std::size_t line = 0;
};

std::vector<Include> IncludesOf(const SourceFile& file) {
    static const std::regex pattern(R"(^\s*#\s*include\s*([<"])([^>"]+)[>"])");
    std::vector<Include> includes;
    std::smatch match;
    for (std::size_t i = 0; i < file.lines.size(); ++i)
        if (file.lines[i].find("include") != std::string::npos && std::regex_search(file.lines[i], match, pattern))
            includes.push_back({match[2], match[1] == "\"", i + 1});
    return includes;
}

std::string Place(const SourceFile& file, std::size_t line) {
    return file.path + ":" + std::to_string(line);
}

std::string IncludeFinding(const SourceFile& file, const Include& include, std::string_view what,
                           std::string_view wayOut) {
    return Place(file, include.line) + " includes " + std::string(what) + "\n  " + std::string(wayOut);
}

using HeaderMap = std::map<std::string, std::vector<const SourceFile*>>;

HeaderMap HeadersByName(const std::vector<SourceFile>& files) {
    HeaderMap headers;
    for (const SourceFile& file : files)
        if (file.IsHeader()) headers[file.Name()].push_back(&file);
    return headers;
}

// Why `file` may not include `header`; nothing when it may.
std::optional<std::string_view> Objection(const SourceFile& file, const SourceFile& header) {
    if (IsTestCode(file.path)) return {};
    if (IsTestCode(header.path)) return "the program never depends on its tests: move the shared piece below both";
    const Layer* from = LayerOf(file.path);
    const Layer* to = LayerOf(header.path);
    if (!from || !to) return {};
    const bool sameTarget = TargetOf(file.path, *from) == TargetOf(header.path, *to);
    if (IsLogic(file) && !sameTarget && to->rank > HighestRankForLogic && !IsSharedLogic(to->folder))
        return LogicWayOut;
    if (sameTarget || to->rank < from->rank) return {};
    return from->wayOut;
}

// Which of the files of that name an include means: one that may be included if there is one.
const SourceFile* Resolve(const SourceFile& file, const std::vector<const SourceFile*>& candidates) {
    for (const SourceFile* header : candidates)
        if (!Objection(file, *header)) return header;
    return candidates.front();
}

bool IsWidgetHeader(std::string_view name) {
    return name.starts_with("QtWidgets/") || name.starts_with("QtUiTools/") || name.starts_with("QtOpenGLWidgets/") ||
           name.starts_with("QtSvgWidgets/") || name.starts_with("QtPrintSupport/") || name == "QtWidgets";
}

// A Qt class without its module: it may be a widget, and only Qt's own headers could tell.
bool IsBareQtHeader(std::string_view name) {
    return name.size() > 2 && name[0] == 'Q' && name[1] >= 'A' && name[1] <= 'Z' && name.find('.') == name.npos;
}

}  // namespace

Findings CheckLayers(const std::vector<SourceFile>& files) {
    Findings findings;
    const HeaderMap headers = HeadersByName(files);
    for (const SourceFile& file : files) {
        for (const Include& include : IncludesOf(file)) {
            const std::string bare = std::filesystem::path(include.name).filename().string();
            const auto candidates = headers.find(bare);
            if (candidates == headers.end()) continue;
            if (include.quoted && bare != include.name) {
                findings.push_back(IncludeFinding(file, include, include.name,
                                                  "headers are included by bare name, \"" + bare +
                                                      "\": link the target that owns it and its folder is searched"));
            }
            if (bare != include.name && !include.quoted) continue;
            const SourceFile* header = Resolve(file, candidates->second);
            if (const auto wayOut = Objection(file, *header))
                findings.push_back(IncludeFinding(file, include, header->path, *wayOut));
        }
    }
    return findings;
}

Findings CheckWidgetFree(const std::vector<SourceFile>& files) {
    Findings findings;
    for (const SourceFile& file : files) {
        const Layer* layer = LayerOf(file.path);
        if (!layer || IsTestCode(file.path)) continue;
        const bool logic = IsLogic(file);
        if (layer->widgets == Widgets::Allowed && !logic) continue;
        for (const Include& include : IncludesOf(file)) {
            if (IsWidgetHeader(include.name)) {
                findings.push_back(IncludeFinding(file, include, include.name, logic ? LogicWayOut : layer->wayOut));
            } else if (IsBareQtHeader(include.name)) {
                findings.push_back(IncludeFinding(file, include, include.name,
                                                  "name the Qt module too, as in QtCore/QString: here widgets are "
                                                  "forbidden and the bare name does not tell"));
            }
        }
    }
    return findings;
}

Findings CheckUniqueHeaders(const std::vector<SourceFile>& files) {
    Findings findings;
    for (const auto& [name, owners] : HeadersByName(files)) {
        std::string places;
        int count = 0;
        for (const SourceFile* owner : owners) {
            if (IsTestCode(owner->path)) continue;
            places += (count++ ? ", " : "") + owner->path;
        }
        if (count > 1)
            findings.push_back(name + " is the name of several headers: " + places + "\n  rename all but one");
    }
    return findings;
}

Findings CheckListed(const std::vector<SourceFile>& files, const std::vector<SourceFile>& lists) {
    // Each word of each list, as a path from the root.
    std::map<std::string, bool> listed;
    static const std::regex word(R"([A-Za-z0-9_./+-]+\.(?:h|cpp))");
    for (const SourceFile& list : lists) {
        // A .cmake file writes its paths from the root.
        const std::filesystem::path folder =
            list.Extension() == ".cmake" ? std::filesystem::path() : std::filesystem::path(list.path).parent_path();
        for (const std::string& line : list.lines) {
            const std::string code = line.substr(0, line.find('#'));
            for (std::sregex_iterator it(code.begin(), code.end(), word), end; it != end; ++it) {
                std::string name = it->str();
                // Of "${PROJECT_SOURCE_DIR}/cmake/X.h" the pattern sees "/cmake/X.h".
                const bool fromRoot = name.starts_with("/");
                if (fromRoot) name.erase(0, 1);
                listed[((fromRoot ? std::filesystem::path() : folder) / name).lexically_normal().generic_string()] =
                    true;
            }
        }
    }
    Findings findings;
    for (const SourceFile& file : files)
        if (!listed.contains(file.path))
            findings.push_back(file.path +
                               " is named by no CMakeLists.txt\n  add it to its folder's list or delete it");
    return findings;
}

Findings CheckLicence(const std::vector<SourceFile>& files) {
    Findings findings;
    for (const SourceFile& file : files) {
        const std::string mark = file.IsCode() ? "//" : "#";
        const std::string expected = mark + " SPDX-License-Identifier: GPL-3.0-or-later";
        if (file.lines.empty() || file.lines.front() != expected)
            findings.push_back(file.path + ":1 lacks the licence\n  its first line is: " + expected);
    }
    return findings;
}

Findings CheckPragmaOnce(const std::vector<SourceFile>& files) {
    Findings findings;
    for (const SourceFile& file : files)
        if (file.IsHeader() && std::find(file.lines.begin(), file.lines.end(), "#pragma once") == file.lines.end())
            findings.push_back(file.path + ":1 can be included twice\n  write #pragma once below the licence");
    return findings;
}

Findings CheckLength(const std::vector<SourceFile>& files) {
    constexpr std::size_t longest = 600;
    Findings findings;
    for (const SourceFile& file : files)
        if (file.lines.size() > longest)
            findings.push_back(file.path + " has " + std::to_string(file.lines.size()) +
                               " lines\n  split it: a file is " + "one idea, and none is longer than " +
                               std::to_string(longest) + " lines");
    return findings;
}
