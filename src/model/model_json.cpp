// The project model as JSON: reading with checks and plain messages, writing with numbers that
// read back to the same singles, and importing a model file into a project folder.
#include "model/model_json.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <set>
#include <type_traits>

#include <fmt/format.h>

#include "core/codepage.h"
#include "core/error.h"
#include "core/file_util.h"
#include "footings/footing_settings.h"

namespace fs = std::filesystem;
using nlohmann::json;

namespace orvak::model {

using beams::BeamRecord;
using beams::BeamSettings;
using beams::defaultBeamSettings;
using beams::kBeamRecordLayout;
using beams::kDefaultLiveLoadMonths;
using beams::kLoadKindCount;
using beams::kMaxSpans;
using beams::LoadKind;
using beams::StoredLoad;
using beams::StoredSpan;
using beams::StoredSupport;

namespace {

constexpr std::array<std::string_view, kLoadKindCount> kLoadKindNames = {"uniform", "triangular",
                                                                         "partial", "point"};

[[noreturn]] void fail(const std::string& where, const std::string& what) {
    throw InputError(where + ": " + what + ".");
}

void requireObject(const json& j, const std::string& where,
                   std::initializer_list<std::string_view> allowed) {
    if (!j.is_object()) {
        fail(where, "must be a JSON object");
    }
    for (const auto& item : j.items()) {
        bool known = false;
        for (const auto a : allowed) {
            known = known || item.key() == a;
        }
        if (!known) {
            fail(where, fmt::format("\"{}\" is not a known field", item.key()));
        }
    }
}

float toSingle(const json& v, const std::string& where, const std::string& key) {
    if (!v.is_number()) {
        fail(where, fmt::format("{} must be a number", key));
    }
    const double d = v.get<double>();
    const auto f = static_cast<float>(d);
    if (!std::isfinite(d) || !std::isfinite(f)) {
        fail(where, fmt::format("{} is far too large a number", key));
    }
    return f;
}

float single(const json& obj, const std::string& where, const char* key) {
    if (!obj.contains(key)) {
        fail(where, fmt::format("{} is missing", key));
    }
    return toSingle(obj.at(key), where, key);
}

float optionalSingle(const json& obj, const std::string& where, const char* key, float fallback) {
    return obj.contains(key) ? toSingle(obj.at(key), where, key) : fallback;
}

std::int16_t toInt16(const json& v, const std::string& where, const std::string& key) {
    if (!v.is_number_integer()) {
        fail(where, fmt::format("{} must be a whole number", key));
    }
    // A whole number of 2^63 or more comes as unsigned: read as signed it would wrap to a
    // small or negative number, so it is compared as it stands.
    if ((v.is_number_unsigned() && v.get<std::uint64_t>() > 32767U) ||
        v.get<std::int64_t>() < -32768 || v.get<std::int64_t>() > 32767) {
        fail(where, fmt::format("{} must be a whole number from -32768 to 32767", key));
    }
    return static_cast<std::int16_t>(v.get<std::int64_t>());
}

std::string singleByteText(const json& obj, const std::string& where, const char* key,
                           std::size_t width) {
    if (!obj.contains(key)) {
        return {};
    }
    if (!obj.at(key).is_string()) {
        fail(where, fmt::format("{} must be a text", key));
    }
    const auto utf8 = obj.at(key).get<std::string>();
    const std::optional<std::string> exact = core::fromUtf8Exact(utf8, core::CodePage::Windows1252);
    if (!exact) {
        fail(where, fmt::format("{} holds a character that the project files cannot keep", key));
    }
    const std::string& bytes = *exact;
    if (std::any_of(bytes.begin(), bytes.end(),
                    [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; })) {
        fail(where, fmt::format("{} holds a control character (a line break, a tab ...)", key));
    }
    if (bytes.size() > width) {
        fail(where, fmt::format("{} is longer than {} characters", key, width));
    }
    if (!bytes.empty() && bytes.back() == ' ') {
        fail(where, fmt::format("{} ends in a blank, which the project files drop", key));
    }
    return bytes;
}

// A single as a JSON number that reads back to the same single: the shortest decimal of the
// single, taken as a double; whole numbers stay whole.
json exactNumber(float f) {
    if (f == std::trunc(f) && std::fabs(f) < 1e7f && !(f == 0.0f && std::signbit(f))) {
        return static_cast<std::int64_t>(f);
    }
    char buf[32];
    const auto r = std::to_chars(buf, buf + sizeof buf, f);
    const double d = std::strtod(std::string(buf, r.ptr).c_str(), nullptr);
    return static_cast<float>(d) == f ? d : static_cast<double>(f);
}

// The numeric settings of a beam or of a column group's copy, by the fields' stored names; the
// other keys in `extra` are read by the caller.
template <class Settings>
void settingsFromJson(const json& j, const std::string& where, Settings& s, std::string_view what,
                      std::initializer_list<std::string_view> extra = {}) {
    if (!j.is_object()) {
        fail(where, "settings must be a JSON object");
    }
    std::set<std::string> known;
    forEachSettingsField(s, [&](std::string_view name, auto& value) {
        const std::string key(name);
        known.insert(key);
        if (!j.contains(key)) {
            return;
        }
        const json& v = j.at(key);
        using T = std::decay_t<decltype(value)>;
        if constexpr (std::is_same_v<T, std::int16_t>) {
            value = toInt16(v, where, "settings " + key);
        } else if constexpr (std::is_same_v<T, float>) {
            value = toSingle(v, where, "settings " + key);
        } else {
            if (!v.is_array() || v.size() != value.size()) {
                fail(where,
                     fmt::format("settings {} must be an array of {} numbers", key, value.size()));
            }
            for (std::size_t i = 0; i < value.size(); ++i) {
                value[i] = toSingle(v[i], where, "settings " + key);
            }
        }
    });
    for (const auto e : extra) {
        known.insert(std::string(e));
    }
    for (const auto& item : j.items()) {
        if (!known.contains(item.key())) {
            fail(where, fmt::format("\"{}\" is not a {}", item.key(), what));
        }
    }
}

// The settings that differ from `defaults`, by the fields' stored names.
template <class Settings> json settingsToJson(const Settings& s, const Settings& defaults) {
    json out = json::object();
    forEachSettingsField(s, [&](std::string_view name, const auto& value) {
        json v;
        bool same = true;
        forEachSettingsField(defaults, [&](std::string_view n, const auto& d) {
            if constexpr (std::is_same_v<std::decay_t<decltype(d)>,
                                         std::decay_t<decltype(value)>>) {
                if (n == name) {
                    same = std::memcmp(&d, &value, sizeof d) == 0;
                }
            }
        });
        if (same) {
            return;
        }
        using T = std::decay_t<decltype(value)>;
        if constexpr (std::is_same_v<T, std::int16_t>) {
            v = value;
        } else if constexpr (std::is_same_v<T, float>) {
            v = exactNumber(value);
        } else {
            v = json::array();
            for (const float x : value) {
                v.push_back(exactNumber(x));
            }
        }
        out[std::string(name)] = v;
    });
    return out;
}

int loadKindFromName(const json& load, const std::string& where) {
    if (!load.contains("kind") || !load.at("kind").is_string()) {
        fail(where, "kind must be one of uniform, triangular, partial, point");
    }
    const auto name = load.at("kind").get<std::string>();
    for (std::size_t k = 0; k < kLoadKindNames.size(); ++k) {
        if (name == kLoadKindNames[k]) {
            return static_cast<int>(k);
        }
    }
    fail(where, fmt::format("kind \"{}\" is not one of uniform, triangular, partial, point", name));
}

void spanFromJson(const json& j, const std::string& where, StoredSpan& span) {
    requireObject(j, where, {"length_m", "section", "loads"});
    span.lengthM = single(j, where, "length_m");
    if (!j.contains("section")) {
        fail(where, "section is missing");
    }
    const json& sec = j.at("section");
    requireObject(sec, where + ", section", {"kind", "dims_cm"});
    if (!sec.contains("kind")) {
        fail(where, "section kind is missing");
    }
    span.sectionKind = toInt16(sec.at("kind"), where, "section kind");
    if (span.sectionKind < 1 || span.sectionKind > 7) {
        fail(where, fmt::format("section kind {} is not one of 1 to 7", span.sectionKind));
    }
    if (!sec.contains("dims_cm") || !sec.at("dims_cm").is_array() ||
        sec.at("dims_cm").size() != 5) {
        fail(where, "section dims_cm must be an array of 5 numbers");
    }
    for (std::size_t d = 0; d < 5; ++d) {
        span.dims[d] = toSingle(sec.at("dims_cm")[d], where, "section dims_cm");
        if (span.dims[d] < 0.0f) {
            fail(where, fmt::format("section dims_cm[{}] is negative", d));
        }
    }
    if (!j.contains("loads")) {
        return;
    }
    if (!j.at("loads").is_array()) {
        fail(where, "loads must be an array");
    }
    for (std::size_t i = 0; i < j.at("loads").size(); ++i) {
        const json& load = j.at("loads")[i];
        const std::string at = fmt::format("{}, load {}", where, i + 1);
        if (!load.is_object()) {
            fail(at, "must be a JSON object");
        }
        const int k = loadKindFromName(load, at);
        StoredLoad& out = span.loads[static_cast<std::size_t>(k)];
        if (out.present) {
            fail(at, fmt::format("a span carries at most one {} load", kLoadKindNames[k]));
        }
        const auto kind = static_cast<LoadKind>(k + 1);
        switch (kind) {
        case LoadKind::Uniform:
            requireObject(load, at, {"kind", "dead", "live"});
            break;
        case LoadKind::Triangular:
            requireObject(load, at, {"kind", "dead", "live", "peak"});
            break;
        case LoadKind::PartialUniform:
            requireObject(load, at, {"kind", "dead", "live", "a_m", "length_m"});
            break;
        case LoadKind::Concentrated:
            requireObject(load, at, {"kind", "dead", "live", "a_m"});
            break;
        }
        out.present = true;
        out.dead = optionalSingle(load, at, "dead", 0.0f);
        out.live = optionalSingle(load, at, "live", 0.0f);
        if (kind == LoadKind::PartialUniform || kind == LoadKind::Concentrated) {
            out.startM = single(load, at, "a_m");
        }
        if (kind == LoadKind::PartialUniform) {
            out.lengthM = single(load, at, "length_m");
        }
        if (kind == LoadKind::Triangular) {
            const json peak = load.value("peak", json("right"));
            if (peak != "left" && peak != "right") {
                fail(at, "peak must be \"left\" or \"right\"");
            }
            span.trianglePeakLeft = peak == "left";
        }
    }
}

} // namespace

BeamRecord beamFromJson(const json& j, const std::string& where) {
    requireObject(j, where,
                  {"name", "fc", "fy", "fy_stirrups", "cover_top_cm", "cover_bottom_cm",
                   "cover_side_cm", "sustained_live_percent", "live_load_duration_months", "spans",
                   "supports", "settings"});
    BeamRecord b;
    b.name = singleByteText(j, where, "name", kBeamRecordLayout["name"].width);
    b.fc = single(j, where, "fc");
    b.fyMain = single(j, where, "fy");
    b.fyStirrups = optionalSingle(j, where, "fy_stirrups", b.fyMain);
    b.coverTopCm = optionalSingle(j, where, "cover_top_cm", 4.0f);
    b.coverBottomCm = optionalSingle(j, where, "cover_bottom_cm", 4.0f);
    b.coverSideCm = optionalSingle(j, where, "cover_side_cm", 2.5f);
    b.sustainedLivePercent = optionalSingle(j, where, "sustained_live_percent", 0.0f);
    b.liveLoadMonths =
        optionalSingle(j, where, "live_load_duration_months", kDefaultLiveLoadMonths);
    b.settings = defaultBeamSettings();
    if (j.contains("settings")) {
        settingsFromJson(j.at("settings"), where, b.settings, "beam setting");
    }
    if (!j.contains("spans") || !j.at("spans").is_array() || j.at("spans").empty()) {
        fail(where, "spans must be an array of 1 to 30 spans");
    }
    const json& spans = j.at("spans");
    if (spans.size() > static_cast<std::size_t>(kMaxSpans)) {
        fail(where, fmt::format("has {} spans; a beam has at most {}", spans.size(), kMaxSpans));
    }
    b.spans.resize(spans.size());
    for (std::size_t s = 0; s < spans.size(); ++s) {
        spanFromJson(spans[s], fmt::format("{}, span {}", where, s + 1), b.spans[s]);
    }
    if (!j.contains("supports") || !j.at("supports").is_array() ||
        j.at("supports").size() != spans.size() + 1) {
        fail(where, fmt::format("supports must be an array of {} supports (one more than the "
                                "spans)",
                                spans.size() + 1));
    }
    for (std::size_t i = 0; i < j.at("supports").size(); ++i) {
        const json& sj = j.at("supports")[i];
        const std::string at = fmt::format("{}, support {}", where, i + 1);
        requireObject(sj, at, {"code", "fixed", "width_cm"});
        StoredSupport sup;
        sup.code = sj.contains("code") ? toInt16(sj.at("code"), at, "code") : std::int16_t{2};
        const json fixed = sj.value("fixed", json(false));
        if (!fixed.is_boolean()) {
            fail(at, "fixed must be true or false");
        }
        sup.second = fixed.get<bool>() ? 1 : 0;
        sup.widthCm = optionalSingle(sj, at, "width_cm", 0.0f);
        if (sup.widthCm < 0.0f) {
            fail(at, "width_cm is negative");
        }
        b.supports.push_back(sup);
    }
    const std::string problem = validateBeam(b);
    if (problem.starts_with("span ") || problem.starts_with("support ")) {
        throw InputError(where + ", " + problem + ".");
    }
    if (!problem.empty()) {
        fail(where, problem);
    }
    return b;
}

json beamToJson(const BeamRecord& b) {
    json j;
    j["name"] = core::toUtf8(b.name, core::CodePage::Windows1252);
    j["fc"] = exactNumber(b.fc);
    j["fy"] = exactNumber(b.fyMain);
    j["fy_stirrups"] = exactNumber(b.fyStirrups);
    j["cover_top_cm"] = exactNumber(b.coverTopCm);
    j["cover_bottom_cm"] = exactNumber(b.coverBottomCm);
    j["cover_side_cm"] = exactNumber(b.coverSideCm);
    j["sustained_live_percent"] = exactNumber(b.sustainedLivePercent);
    j["live_load_duration_months"] = exactNumber(b.liveLoadMonths);
    j["spans"] = json::array();
    for (const StoredSpan& span : b.spans) {
        json sj;
        sj["length_m"] = exactNumber(span.lengthM);
        json dims = json::array();
        for (const float d : span.dims) {
            dims.push_back(exactNumber(d));
        }
        sj["section"] = {{"kind", span.sectionKind}, {"dims_cm", dims}};
        sj["loads"] = json::array();
        for (std::size_t k = 0; k < kLoadKindCount; ++k) {
            const StoredLoad& load = span.loads[k];
            if (!load.present) {
                continue;
            }
            json lj;
            lj["kind"] = kLoadKindNames[k];
            lj["dead"] = exactNumber(load.dead);
            lj["live"] = exactNumber(load.live);
            const auto kind = static_cast<LoadKind>(k + 1);
            if (kind == LoadKind::PartialUniform || kind == LoadKind::Concentrated) {
                lj["a_m"] = exactNumber(load.startM);
            }
            if (kind == LoadKind::PartialUniform) {
                lj["length_m"] = exactNumber(load.lengthM);
            }
            if (kind == LoadKind::Triangular) {
                lj["peak"] = span.trianglePeakLeft ? "left" : "right";
            }
            sj["loads"].push_back(lj);
        }
        j["spans"].push_back(sj);
    }
    j["supports"] = json::array();
    for (const StoredSupport& sup : b.supports) {
        j["supports"].push_back({{"code", sup.code},
                                 {"fixed", sup.second == 1},
                                 {"width_cm", exactNumber(sup.widthCm)}});
    }
    const json settings = settingsToJson(b.settings, defaultBeamSettings());
    if (!settings.empty()) {
        j["settings"] = settings;
    }
    return j;
}

namespace {

// A fixed-size array of singles from a JSON array of at most that many numbers; the rest 0.
template <std::size_t N>
void singlesFromJson(const json& obj, const std::string& where, const char* key,
                     std::array<float, N>& out) {
    if (!obj.contains(key)) {
        return;
    }
    const json& v = obj.at(key);
    if (!v.is_array() || v.size() > N) {
        fail(where, fmt::format("{} must be an array of at most {} numbers", key, N));
    }
    for (std::size_t i = 0; i < v.size(); ++i) {
        out[i] = toSingle(v[i], where, key);
    }
}

// The array without its trailing zeros.
template <std::size_t N> json singlesToJson(const std::array<float, N>& values) {
    std::size_t n = N;
    while (n > 0 && values[n - 1] == 0.0f) {
        --n;
    }
    json out = json::array();
    for (std::size_t i = 0; i < n; ++i) {
        out.push_back(exactNumber(values[i]));
    }
    return out;
}

// End moments as [M2, M1] in t·m.
void momentsFromJson(const json& obj, const std::string& where, const char* key,
                     columns::EndMoments& m) {
    std::array<float, 2> pair{};
    singlesFromJson(obj, where, key, pair);
    m = {pair[0], pair[1]};
}

json momentsToJson(const columns::EndMoments& m) {
    return singlesToJson(std::array<float, 2>{m.m2, m.m1});
}

columns::Column columnFromJson(const json& j, const std::string& where, std::size_t groups) {
    requireObject(j, where,
                  {"name", "group", "type", "height_cm", "dims_cm", "pu_t", "mx_tm", "my_tm"});
    columns::Column c;
    c.name = singleByteText(j, where, "name", columns::kColumnNameWidth);
    if (j.contains("group")) {
        c.group = toInt16(j.at("group"), where, "group");
        if (c.group < 0 || static_cast<std::size_t>(c.group) > groups) {
            fail(where,
                 fmt::format("group must be 0 (none) or a group of its level, 1 to {}", groups));
        }
    }
    if (j.contains("type")) {
        c.type = toInt16(j.at("type"), where, "type");
    }
    c.heightCm = single(j, where, "height_cm");
    singlesFromJson(j, where, "dims_cm", c.dims);
    c.puT = single(j, where, "pu_t");
    momentsFromJson(j, where, "mx_tm", c.x);
    momentsFromJson(j, where, "my_tm", c.y);
    if (const std::string problem = columns::validateColumn(c); !problem.empty()) {
        fail(where, problem);
    }
    return c;
}

json columnToJson(const columns::Column& c) {
    json j = {{"name", core::toUtf8(c.name, core::CodePage::Windows1252)},
              {"group", c.group},
              {"type", c.type},
              {"height_cm", exactNumber(c.heightCm)},
              {"dims_cm", singlesToJson(c.dims)},
              {"pu_t", exactNumber(c.puT)}};
    if (c.x != columns::EndMoments{}) {
        j["mx_tm"] = momentsToJson(c.x);
    }
    if (c.y != columns::EndMoments{}) {
        j["my_tm"] = momentsToJson(c.y);
    }
    return j;
}

columns::ColumnGroup groupFromJson(const json& j, const std::string& where) {
    requireObject(j, where,
                  {"name", "text", "type", "dims_cm", "cover_cm", "sustained", "settings",
                   "members", "state", "height_cm", "pu_t", "mx_tm", "my_tm", "steel_area_cm2",
                   "bar_count", "bar_diameter_mm"});
    columns::ColumnGroup g;
    g.name = singleByteText(j, where, "name", columns::kGroupNameWidth);
    g.text = singleByteText(j, where, "text", columns::kGroupLayout["text"].width);
    const auto int16Or = [&](const char* key, std::int16_t fallback) {
        return j.contains(key) ? toInt16(j.at(key), where, key) : fallback;
    };
    g.type = int16Or("type", 1);
    singlesFromJson(j, where, "dims_cm", g.dims);
    g.coverCm = optionalSingle(j, where, "cover_cm", 0.0f);
    if (j.contains("sustained")) {
        if (!j.at("sustained").is_boolean()) {
            fail(where, "sustained must be true or false");
        }
        g.secondAxis = j.at("sustained").get<bool>() ? 1 : 0;
    }
    if (j.contains("settings")) {
        const json& sj = j.at("settings");
        settingsFromJson(sj, where, g.settings, "column setting", {"TypeNames"});
        if (sj.contains("TypeNames")) {
            const json& names = sj.at("TypeNames");
            if (!names.is_array() || names.size() != g.settings.TypeNames.size()) {
                fail(where, fmt::format("settings TypeNames must be an array of {} texts",
                                        g.settings.TypeNames.size()));
            }
            for (std::size_t i = 0; i < names.size(); ++i) {
                g.settings.TypeNames[i] = singleByteText(json{{"TypeNames", names[i]}}, where,
                                                         "TypeNames", columns::kTypeNameWidth);
            }
        }
    }
    g.members = int16Or("members", 0);
    const std::int16_t state = int16Or("state", 0);
    if (state < 0 || state > static_cast<std::int16_t>(columns::GroupState::Unstable)) {
        fail(where, "state must be a whole number from 0 to 4");
    }
    g.state = static_cast<columns::GroupState>(state);
    g.colLenCm = optionalSingle(j, where, "height_cm", 0.0f);
    g.puT = optionalSingle(j, where, "pu_t", 0.0f);
    momentsFromJson(j, where, "mx_tm", g.x);
    momentsFromJson(j, where, "my_tm", g.y);
    g.steelAreaCm2 = optionalSingle(j, where, "steel_area_cm2", 0.0f);
    g.barCount = int16Or("bar_count", 0);
    g.barDiameterMm = int16Or("bar_diameter_mm", 0);
    if (const std::string problem = columns::validateGroup(g); !problem.empty()) {
        fail(where, problem);
    }
    return g;
}

json groupToJson(const columns::ColumnGroup& g) {
    json j = {{"name", core::toUtf8(g.name, core::CodePage::Windows1252)},
              {"type", g.type},
              {"dims_cm", singlesToJson(g.dims)}};
    if (!g.text.empty()) {
        j["text"] = core::toUtf8(g.text, core::CodePage::Windows1252);
    }
    if (g.coverCm != 0.0f) {
        j["cover_cm"] = exactNumber(g.coverCm);
    }
    if (g.secondAxis != 0) {
        j["sustained"] = true;
    }
    const columns::ColumnSettings defaults = columns::defaultColumnSettings();
    json settings = settingsToJson(g.settings, defaults);
    if (g.settings.TypeNames != defaults.TypeNames) {
        json names = json::array();
        for (const auto& n : g.settings.TypeNames) {
            names.push_back(core::toUtf8(n, core::CodePage::Windows1252));
        }
        settings["TypeNames"] = names;
    }
    if (!settings.empty()) {
        j["settings"] = settings;
    }
    // What the last gathering and design left in the group, so that an export reads back the
    // same record.
    j["members"] = g.members;
    j["state"] = static_cast<std::int16_t>(g.state);
    j["height_cm"] = exactNumber(g.colLenCm);
    j["pu_t"] = exactNumber(g.puT);
    j["mx_tm"] = momentsToJson(g.x);
    j["my_tm"] = momentsToJson(g.y);
    j["steel_area_cm2"] = exactNumber(g.steelAreaCm2);
    j["bar_count"] = g.barCount;
    j["bar_diameter_mm"] = g.barDiameterMm;
    return j;
}

// The columns and groups of one level from the object holding "columns" and "column_groups".
void levelFromJson(const json& j, const std::string& where, std::vector<columns::Column>& cols,
                   std::vector<columns::ColumnGroup>& groups) {
    for (const char* key : {"columns", "column_groups"}) {
        if (j.contains(key) && !j.at(key).is_array()) {
            fail(where, fmt::format("{} must be an array", key));
        }
    }
    if (j.contains("column_groups")) {
        for (std::size_t n = 0; n < j.at("column_groups").size(); ++n) {
            groups.push_back(
                groupFromJson(j.at("column_groups")[n], fmt::format("{}, group {}", where, n + 1)));
        }
    }
    if (j.contains("columns")) {
        for (std::size_t n = 0; n < j.at("columns").size(); ++n) {
            cols.push_back(columnFromJson(
                j.at("columns")[n], fmt::format("{}, column {}", where, n + 1), groups.size()));
        }
    }
}

void levelToJson(json& j, const std::vector<columns::Column>& cols,
                 const std::vector<columns::ColumnGroup>& groups) {
    if (!cols.empty()) {
        j["columns"] = json::array();
        for (const auto& c : cols) {
            j["columns"].push_back(columnToJson(c));
        }
    }
    if (!groups.empty()) {
        j["column_groups"] = json::array();
        for (const auto& g : groups) {
            j["column_groups"].push_back(groupToJson(g));
        }
    }
}

constexpr std::array<std::string_view, 3> kFootingKindNames = {"isolated", "combined", "pile"};

footings::StoredFootingBars footingBarsFromJson(const json& obj, const std::string& where,
                                                const char* key) {
    footings::StoredFootingBars b;
    if (!obj.contains(key)) {
        return b;
    }
    const json& bj = obj.at(key);
    const std::string at = fmt::format("{}, {}", where, key);
    requireObject(bj, at, {"count", "diameter_mm", "area_cm2", "length_cm"});
    b.count = bj.contains("count") ? toInt16(bj.at("count"), at, "count") : 0;
    b.diameterMm = optionalSingle(bj, at, "diameter_mm", 0.0f);
    b.areaCm2 = optionalSingle(bj, at, "area_cm2", 0.0f);
    b.lengthCm = optionalSingle(bj, at, "length_cm", 0.0f);
    return b;
}

json footingBarsToJson(const footings::StoredFootingBars& b) {
    return {{"count", b.count},
            {"diameter_mm", exactNumber(b.diameterMm)},
            {"area_cm2", exactNumber(b.areaCm2)},
            {"length_cm", exactNumber(b.lengthCm)}};
}

// A footing group; its columns name the footing level's column groups by their number (1 for
// the first of "column_groups"), and the group keeps each one's name as the file does.
footings::FootingGroup footingGroupFromJson(const json& j, const std::string& where,
                                            const std::vector<columns::ColumnGroup>& groups) {
    requireObject(j, where,
                  {"name", "kind", "columns", "piles", "settings", "state", "a_cm", "b_cm", "h_cm",
                   "bars_y", "bars_x"});
    footings::FootingGroup g;
    g.name = singleByteText(j, where, "name", footings::kFootingNameWidth);
    if (!j.contains("kind") || !j.at("kind").is_string()) {
        fail(where, "kind must be \"isolated\", \"combined\" or \"pile\"");
    }
    const auto kind = std::find(kFootingKindNames.begin(), kFootingKindNames.end(),
                                j.at("kind").get<std::string>());
    if (kind == kFootingKindNames.end()) {
        fail(where, "kind must be \"isolated\", \"combined\" or \"pile\"");
    }
    g.kind = static_cast<footings::FootingKind>(kind - kFootingKindNames.begin() + 1);
    if (!j.contains("columns") || !j.at("columns").is_array() ||
        j.at("columns").size() != g.columnCount()) {
        fail(where, g.columnCount() == 1 ? std::string("columns must be an array of one column")
                                         : std::string("columns must be an array of two columns"));
    }
    for (std::size_t k = 0; k < g.columnCount(); ++k) {
        const json& cj = j.at("columns")[k];
        const std::string at = fmt::format("{}, column {}", where, k + 1);
        requireObject(cj, at, {"column_group", "cx_cm", "cy_cm"});
        footings::FootingPlacement& p = g.columns[k];
        if (!cj.contains("column_group")) {
            fail(at, "column_group is missing");
        }
        p.group = toInt16(cj.at("column_group"), at, "column_group");
        if (p.group < 1 || static_cast<std::size_t>(p.group) > groups.size()) {
            fail(at, fmt::format("column_group must be a column group of the footing level, 1 "
                                 "to {}",
                                 groups.size()));
        }
        p.groupName = groups[static_cast<std::size_t>(p.group - 1)].name;
        p.cxCm = optionalSingle(cj, at, "cx_cm", 0.0f);
        p.cyCm = optionalSingle(cj, at, "cy_cm", 0.0f);
    }
    if (j.contains("piles")) {
        const json& pj = j.at("piles");
        const std::string at = where + ", piles";
        requireObject(pj, at,
                      {"count", "diameter_cm", "length_cm", "surface_friction", "end_bearing"});
        if (pj.contains("count")) {
            g.piles = toInt16(pj.at("count"), at, "count");
        }
        g.pileDiameterCm = optionalSingle(pj, at, "diameter_cm", g.pileDiameterCm);
        g.pileLengthCm = optionalSingle(pj, at, "length_cm", g.pileLengthCm);
        g.surfaceFriction = optionalSingle(pj, at, "surface_friction", g.surfaceFriction);
        g.endBearing = optionalSingle(pj, at, "end_bearing", g.endBearing);
    }
    if (j.contains("settings")) {
        settingsFromJson(j.at("settings"), where, g.settings, "footing setting");
    }
    if (j.contains("state")) {
        const std::int16_t state = toInt16(j.at("state"), where, "state");
        if (state < 1 || state > 4) {
            fail(where, "state must be a whole number from 1 to 4");
        }
        g.status = static_cast<footings::FootingStatus>(state);
    }
    g.aCm = optionalSingle(j, where, "a_cm", 0.0f);
    g.bCm = optionalSingle(j, where, "b_cm", 0.0f);
    g.hCm = optionalSingle(j, where, "h_cm", 0.0f);
    g.barsY = footingBarsFromJson(j, where, "bars_y");
    g.barsX = footingBarsFromJson(j, where, "bars_x");
    if (const std::string problem = footings::validateFootingGroup(g); !problem.empty()) {
        fail(where, problem);
    }
    if (const std::string problem = footings::checkFootingMainData(g, groups); !problem.empty()) {
        fail(where, problem);
    }
    return g;
}

json footingGroupToJson(const footings::FootingGroup& g) {
    json j = {{"name", core::toUtf8(g.name, core::CodePage::Windows1252)},
              {"kind", kFootingKindNames[static_cast<std::size_t>(g.kind) - 1]}};
    j["columns"] = json::array();
    for (std::size_t k = 0; k < g.columnCount(); ++k) {
        const footings::FootingPlacement& p = g.columns[k];
        j["columns"].push_back({{"column_group", p.group},
                                {"cx_cm", exactNumber(p.cxCm)},
                                {"cy_cm", exactNumber(p.cyCm)}});
    }
    const footings::FootingGroup defaults;
    if (g.kind == footings::FootingKind::Pile || g.piles != defaults.piles ||
        g.pileDiameterCm != defaults.pileDiameterCm || g.pileLengthCm != defaults.pileLengthCm ||
        g.surfaceFriction != defaults.surfaceFriction || g.endBearing != defaults.endBearing) {
        j["piles"] = {{"count", g.piles},
                      {"diameter_cm", exactNumber(g.pileDiameterCm)},
                      {"length_cm", exactNumber(g.pileLengthCm)},
                      {"surface_friction", exactNumber(g.surfaceFriction)},
                      {"end_bearing", exactNumber(g.endBearing)}};
    }
    if (json settings = settingsToJson(g.settings, footings::defaultFootingSettings());
        !settings.empty()) {
        j["settings"] = settings;
    }
    // What the last design left in the group, so that an export reads back the same record.
    j["state"] = static_cast<std::int16_t>(g.status);
    j["a_cm"] = exactNumber(g.aCm);
    j["b_cm"] = exactNumber(g.bCm);
    j["h_cm"] = exactNumber(g.hCm);
    j["bars_y"] = footingBarsToJson(g.barsY);
    j["bars_x"] = footingBarsToJson(g.barsX);
    return j;
}

} // namespace

ProjectModel modelFromJson(const json& j) {
    requireObject(j, "The model", {"format", "version", "about", "floors", "footing_level"});
    if (j.value("format", json()) != kModelFormat) {
        fail("The model", "format must be \"orvak-model\"");
    }
    if (j.value("version", json()) != kModelVersion) {
        fail("The model", fmt::format("version must be {}", kModelVersion));
    }
    if (!j.contains("floors") || !j.at("floors").is_array()) {
        fail("The model", "floors must be an array");
    }
    ProjectModel model;
    for (std::size_t i = 0; i < j.at("floors").size(); ++i) {
        const json& fj = j.at("floors")[i];
        std::string where = fmt::format("Floor {}", i + 1);
        requireObject(fj, where,
                      {"number", "name", "level_m", "slab_thickness_cm", "beams", "columns",
                       "column_groups"});
        FloorModel fm;
        if (!fj.contains("number")) {
            fail(where, "number is missing");
        }
        fm.floor.number = toInt16(fj.at("number"), where, "number");
        where = fmt::format("Floor {}", fm.floor.number);
        fm.floor.name = singleByteText(fj, where, "name", floors::kFloorLayout["name"].width);
        fm.floor.levelM = optionalSingle(fj, where, "level_m", 0.0f);
        fm.floor.thicknessCm = optionalSingle(fj, where, "slab_thickness_cm", 0.0f);
        if (fj.contains("beams")) {
            if (!fj.at("beams").is_array()) {
                fail(where, "beams must be an array");
            }
            if (fj.at("beams").size() > static_cast<std::size_t>(beams::kMaxBeamsPerFloor)) {
                fail(where, fmt::format("has {} beams; a floor holds at most {} (the steel "
                                        "quantities number them in three digits)",
                                        fj.at("beams").size(), beams::kMaxBeamsPerFloor));
            }
            for (std::size_t n = 0; n < fj.at("beams").size(); ++n) {
                const json& bj = fj.at("beams")[n];
                std::string at = fmt::format("{}, beam {}", where, n + 1);
                if (bj.is_object() && bj.contains("name") && bj.at("name").is_string()) {
                    at += fmt::format(" ({})", bj.at("name").get<std::string>());
                }
                BeamRecord beam = beamFromJson(bj, at);
                beam.floor = fm.floor.number;
                beam.number = static_cast<std::int16_t>(n + 1);
                fm.beams.push_back(std::move(beam));
            }
        }
        levelFromJson(fj, where, fm.columns, fm.groups);
        model.floors.push_back(std::move(fm));
    }
    if (j.contains("footing_level")) {
        const json& lj = j.at("footing_level");
        requireObject(lj, "The footing level", {"columns", "column_groups", "footing_groups"});
        levelFromJson(lj, "The footing level", model.footingColumns, model.footingGroups);
        if (lj.contains("footing_groups")) {
            const json& fg = lj.at("footing_groups");
            if (!fg.is_array()) {
                fail("The footing level", "footing_groups must be an array");
            }
            for (std::size_t n = 0; n < fg.size(); ++n) {
                model.footingDesignGroups.push_back(footingGroupFromJson(
                    fg[n], fmt::format("The footing level, footing group {}", n + 1),
                    model.footingGroups));
            }
        }
    }
    std::vector<floors::Floor> list;
    for (const auto& fm : model.floors) {
        list.push_back(fm.floor);
    }
    if (const std::string problem = floors::validateFloors(list); !problem.empty()) {
        throw InputError(problem);
    }
    return model;
}

json modelToJson(const ProjectModel& model) {
    json j;
    j["format"] = kModelFormat;
    j["version"] = kModelVersion;
    j["floors"] = json::array();
    for (const FloorModel& fm : model.floors) {
        json fj;
        fj["number"] = fm.floor.number;
        fj["name"] = core::toUtf8(fm.floor.name, core::CodePage::Windows1252);
        fj["level_m"] = exactNumber(fm.floor.levelM);
        fj["slab_thickness_cm"] = exactNumber(fm.floor.thicknessCm);
        fj["beams"] = json::array();
        for (const BeamRecord& b : fm.beams) {
            fj["beams"].push_back(beamToJson(b));
        }
        levelToJson(fj, fm.columns, fm.groups);
        j["floors"].push_back(fj);
    }
    if (!model.footingColumns.empty() || !model.footingGroups.empty() ||
        !model.footingDesignGroups.empty()) {
        json lj = json::object();
        levelToJson(lj, model.footingColumns, model.footingGroups);
        if (!model.footingDesignGroups.empty()) {
            lj["footing_groups"] = json::array();
            for (const auto& g : model.footingDesignGroups) {
                lj["footing_groups"].push_back(footingGroupToJson(g));
            }
        }
        j["footing_level"] = lj;
    }
    return j;
}

json readJsonFile(const fs::path& path) {
    const auto bytes = core::readWholeFile(path);
    if (!bytes) {
        throw FileError(path, "The file cannot be read");
    }
    try {
        return json::parse(bytes->begin(), bytes->end());
    } catch (const json::exception& e) {
        // The parser's words without its "[json.exception.parse_error.101] parse error" tag:
        // "at line 3, column 5: syntax error while parsing object - ...".
        std::string what = e.what();
        if (const auto tag = what.find("] "); what.starts_with("[json.") && tag != what.npos) {
            what.erase(0, tag + 2);
        }
        if (what.starts_with("parse error ")) {
            what.erase(0, 12);
        }
        throw FileError(path, "The file is not valid JSON: " + what);
    }
}

void importModelFile(const fs::path& projectFolder, const fs::path& modelFile) {
    const json j = readJsonFile(modelFile);
    writeProjectModel(projectFolder, modelFromJson(j));
}

} // namespace orvak::model
