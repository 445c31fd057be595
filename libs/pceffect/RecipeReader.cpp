// SPDX-License-Identifier: GPL-3.0-or-later
#include "RecipeReader.h"

#include <functional>
#include <set>
#include <span>

#include "TextFields.h"

namespace {

constexpr std::size_t LargestFile = 64 << 10;
constexpr std::size_t MostPoints = 24;
constexpr std::size_t MostLeaks = 12;

// What a key takes: `count` numbers from low to high.
struct Field {
    std::string_view section;
    std::string_view key;
    double low, high;
    std::function<std::span<double>(Recipe&)> place;
};

std::span<double> One(double& value) {
    return {&value, 1};
}

std::vector<Field> BloomFields(std::string_view section, Bloom Recipe::*bloom) {
    return {{section, "amount", 0, 100, [bloom](Recipe& r) { return One((r.*bloom).amount); }},
            {section, "threshold", 0, 99, [bloom](Recipe& r) { return One((r.*bloom).threshold); }},
            {section, "radius", 0.5, 60, [bloom](Recipe& r) { return One((r.*bloom).radius); }},
            {section, "colour", 0, 255, [bloom](Recipe& r) { return std::span<double>((r.*bloom).colour); }}};
}

const std::vector<Field>& Fields() {
    static const std::vector<Field> fields = [] {
        std::vector<Field> list{
            {"matrix", "red", -3, 3, [](Recipe& r) { return std::span<double>(r.matrix[0]); }},
            {"matrix", "green", -3, 3, [](Recipe& r) { return std::span<double>(r.matrix[1]); }},
            {"matrix", "blue", -3, 3, [](Recipe& r) { return std::span<double>(r.matrix[2]); }},
            {"grey", "mix", -2, 3,
             [](Recipe& r) {
                 r.grey = true;
                 return std::span<double>(r.mix);
             }},
            {"colour", "saturation", 0, 200, [](Recipe& r) { return One(r.saturation); }},
            {"colour", "vibrance", -100, 100, [](Recipe& r) { return One(r.vibrance); }},
            {"split", "shadows", -360, 360, [](Recipe& r) { return std::span<double>(&r.shadows.hue, 2); }},
            {"split", "highlights", -360, 360, [](Recipe& r) { return std::span<double>(&r.highlights.hue, 2); }},
            {"split", "balance", -100, 100, [](Recipe& r) { return One(r.balance); }},
            {"skin", "keep", 0, 100, [](Recipe& r) { return One(r.keepSkin); }},
            {"skin", "most", 100, 1000, [](Recipe& r) { return One(r.mostSkin); }},
            {"fade", "black", 0, 128, [](Recipe& r) { return std::span<double>(r.black); }},
            {"fade", "white", 128, 255, [](Recipe& r) { return std::span<double>(r.white); }},
            {"vignette", "amount", 0, 100, [](Recipe& r) { return One(r.vignette.amount); }},
            {"vignette", "start", 0, 200, [](Recipe& r) { return One(r.vignette.start); }},
            {"vignette", "end", 1, 300, [](Recipe& r) { return One(r.vignette.end); }},
            {"vignette", "round", 0, 100, [](Recipe& r) { return One(r.vignette.round); }},
            {"vignette", "x", -100, 200, [](Recipe& r) { return One(r.vignette.x); }},
            {"vignette", "y", -100, 200, [](Recipe& r) { return One(r.vignette.y); }},
            {"vignette", "colour", 0, 255, [](Recipe& r) { return std::span<double>(r.vignette.colour); }},
            {"edges", "amount", 0, 100, [](Recipe& r) { return One(r.edges.amount); }},
            {"edges", "radius", 0.5, 40, [](Recipe& r) { return One(r.edges.radius); }},
            {"edges", "start", 0, 99, [](Recipe& r) { return One(r.edges.start); }},
            {"face", "smooth", 0, 10, [](Recipe& r) { return One(r.face.smooth); }},
            {"face", "even", 0, 100, [](Recipe& r) { return One(r.face.even); }},
            {"face", "light", -10, 10, [](Recipe& r) { return One(r.face.light); }},
            {"face", "turn", -30, 30, [](Recipe& r) { return One(r.face.turn); }},
            {"face", "saturation", 0, 200, [](Recipe& r) { return One(r.face.saturation); }},
            {"face", "clarity", 0, 100, [](Recipe& r) { return One(r.face.clarity); }},
            {"grain", "amount", 0, 30, [](Recipe& r) { return One(r.grain.amount); }},
            {"grain", "size", 0.1, 4, [](Recipe& r) { return One(r.grain.size); }},
            {"grain", "shadows", 0, 100, [](Recipe& r) { return One(r.grain.shadows); }},
            {"grain", "highlights", 0, 100, [](Recipe& r) { return One(r.grain.highlights); }}};
        for (const auto& field : BloomFields("glow", &Recipe::glow)) list.push_back(field);
        for (const auto& field : BloomFields("halation", &Recipe::halation)) list.push_back(field);
        static constexpr std::string_view names[Recipe::HueBands] = {"red",  "orange", "yellow", "green",
                                                                     "aqua", "blue",   "purple", "magenta"};
        for (int band = 0; band < Recipe::HueBands; ++band)
            list.push_back({"hues", names[band], -100, 100,
                            [band](Recipe& r) { return std::span<double>(&r.hues[band].turn, 3); }});
        // Every leak has a section of its own; these stand for the one that was opened last.
        const auto leak = [&](std::string_view key, double low, double high, double Leak::*member) {
            list.push_back({"leak", key, low, high, [member](Recipe& r) { return One(r.leaks.back().*member); }});
        };
        leak("strength", 0, 400, &Leak::strength);
        leak("x", -200, 300, &Leak::x);
        leak("y", -200, 300, &Leak::y);
        leak("width", 1, 400, &Leak::width);
        leak("height", 1, 400, &Leak::height);
        leak("angle", -360, 360, &Leak::angle);
        leak("wobble", 0, 100, &Leak::wobble);
        leak("seed", 0, 1000, &Leak::seed);
        list.push_back({"leak", "core", 0, 255, [](Recipe& r) { return std::span<double>(r.leaks.back().core); }});
        list.push_back({"leak", "rim", 0, 255, [](Recipe& r) { return std::span<double>(r.leaks.back().rim); }});
        return list;
    }();
    return fields;
}

// HueChange and Tint are filled as rows of numbers.
static_assert(sizeof(HueChange) == 3 * sizeof(double) && sizeof(Tint) == 2 * sizeof(double));

std::string Shown(double value) {
    std::string text = std::to_string(value);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.ends_with('.')) text.pop_back();
    return text;
}

class Parser {
  public:
    RecipeResult Run(std::string_view text) {
        if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
        while (!text.empty() && m_error.empty()) {
            ++m_line;
            const std::string_view line = TakeLine(text);
            Line(Trimmed(line.substr(0, line.find('#'))));
        }
        if (m_error.empty()) CheckWhole();
        if (!m_error.empty()) return {{}, m_error};
        return {m_recipe, {}};
    }

  private:
    void Fail(const std::string& what) { m_error = "line " + std::to_string(m_line) + ": " + what; }

    void Line(std::string_view line) {
        if (line.empty()) return;
        if (line.starts_with('[')) {
            Section(line);
            return;
        }
        const auto equals = line.find('=');
        if (equals == line.npos) return Fail("neither a [section] nor key = value: \"" + Printable(line) + "\"");
        const std::string_view key = Trimmed(line.substr(0, equals));
        const std::string_view value = Trimmed(line.substr(equals + 1));
        if (m_section.empty()) return Fail("\"" + Printable(key) + "\" stands before the first section");
        if (!m_seen.insert(m_section + "/" + std::string(key)).second)
            return Fail("\"" + Printable(key) + "\" is given twice in [" + Printable(m_section) + "]");
        if (value.empty()) return Fail("\"" + Printable(key) + "\" has no value");
        Value(key, value);
    }

    void Section(std::string_view line) {
        if (!line.ends_with(']')) return Fail("a section ends with ]");
        const std::string_view name = Trimmed(line.substr(1, line.size() - 2));
        static const std::set<std::string_view> names{"look",     "matrix", "grey", "tone", "colour",   "skin",
                                                      "hues",     "split",  "fade", "glow", "vignette", "edges",
                                                      "halation", "grain",  "leak", "face"};
        if (!names.contains(name)) return Fail("unknown section [" + Printable(name) + "]");
        if (name == "leak") {
            if (m_recipe.leaks.size() == MostLeaks) return Fail("more than " + std::to_string(MostLeaks) + " leaks");
            m_recipe.leaks.emplace_back();
            std::erase_if(m_seen, [](const std::string& key) { return key.starts_with("leak/"); });
        } else if (!m_sections.insert(name).second) {
            return Fail("[" + Printable(name) + "] is opened twice");
        }
        m_section = name;
    }

    void Value(std::string_view key, std::string_view value) {
        if (m_section == "look") {
            if (key != "title") return Fail("unknown key \"" + Printable(key) + "\" in [look]");
            m_recipe.title = value;
            return;
        }
        if (m_section == "tone") return Curve(key, value);
        if (m_section == "leak" && key == "shape") return Shape(value);
        for (const Field& field : Fields())
            if (field.section == m_section && field.key == key) return Numbers(field, value);
        Fail("unknown key \"" + Printable(key) + "\" in [" + m_section + "]");
    }

    void Numbers(const Field& field, std::string_view value) {
        const std::span<double> place = field.place(m_recipe);
        std::size_t count = 0;
        for (; count < place.size() && !Trimmed(value).empty(); ++count) {
            const std::string_view word = TakeWord(value);
            const auto number = NumberOf(word);
            if (!number) return Fail("\"" + Printable(word) + "\" is not a number");
            if (*number < field.low || *number > field.high)
                return Fail(std::string(field.key) + " must be from " + Shown(field.low) + " to " + Shown(field.high));
            place[count] = *number;
        }
        if (count != place.size() || !Trimmed(value).empty())
            Fail(std::string(field.key) + " takes " + std::to_string(place.size()) +
                 (place.size() == 1 ? " number" : " numbers"));
    }

    // Pairs of levels: "0 8, 128 130, 255 250".
    void Curve(std::string_view key, std::string_view value) {
        CurvePoints* curve = key == "master"  ? &m_recipe.master
                             : key == "red"   ? &m_recipe.red
                             : key == "green" ? &m_recipe.green
                             : key == "blue"  ? &m_recipe.blue
                                              : nullptr;
        if (!curve) return Fail("unknown key \"" + Printable(key) + "\" in [tone]");
        while (!value.empty()) {
            const auto comma = value.find(',');
            std::string_view pair = value.substr(0, comma);
            value.remove_prefix(comma == value.npos ? value.size() : comma + 1);
            const auto x = NumberOf(TakeWord(pair)), y = NumberOf(TakeWord(pair));
            if (!x || !y || !Trimmed(pair).empty()) return Fail("a point of a curve is two numbers: in and out");
            if (*x < 0 || *x > 255 || *y < 0 || *y > 255) return Fail("a point of a curve lies within 0 to 255");
            if (!curve->empty() && (*x - curve->back().x < 4 || *y < curve->back().y))
                return Fail("the points of a curve rise, at least 4 levels apart");
            curve->push_back({*x, *y});
            if (curve->size() > MostPoints) return Fail("more than " + std::to_string(MostPoints) + " points");
        }
        if (curve->size() < 2) Fail("a curve has two points or more");
    }

    void Shape(std::string_view value) {
        Leak& leak = m_recipe.leaks.back();
        if (value == "glow")
            leak.shape = Leak::Shape::Glow;
        else if (value == "band")
            leak.shape = Leak::Shape::Band;
        else if (value == "border")
            leak.shape = Leak::Shape::Border;
        else
            Fail("shape is glow, band or border");
    }

    void CheckWhole() {
        if (m_recipe.title.empty()) Fail("[look] has no title");
        if (m_recipe.vignette.end <= m_recipe.vignette.start) Fail("the vignette ends before it starts");
        for (const Tint& tint : {m_recipe.shadows, m_recipe.highlights})
            if (tint.strength < 0 || tint.strength > 100) Fail("the strength of a tint is from 0 to 100");
    }

    Recipe m_recipe;
    std::string m_error;
    std::string m_section;
    std::set<std::string> m_seen;
    std::set<std::string_view> m_sections;
    int m_line = 0;
};

}  // namespace

RecipeResult ParseRecipe(std::string_view text) {
    if (text.size() > LargestFile) return {{}, "line 1: larger than 64 kB"};
    return Parser().Run(text);
}

RecipeResult ReadRecipe(const std::filesystem::path& file) {
    const std::string name = Printable(file.filename().string());
    const auto text = ReadWholeText(file, LargestFile);
    if (!text) return {{}, name + ": cannot be read"};
    RecipeResult result = ParseRecipe(*text);
    if (!result.error.empty()) result.error = name + ": " + result.error;
    return result;
}
