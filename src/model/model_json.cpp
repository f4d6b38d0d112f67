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

void settingsFromJson(const json& j, const std::string& where, BeamSettings& s) {
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
    for (const auto& item : j.items()) {
        if (!known.contains(item.key())) {
            fail(where, fmt::format("\"{}\" is not a beam setting", item.key()));
        }
    }
}

json settingsToJson(const BeamSettings& s) {
    const BeamSettings defaults = defaultBeamSettings();
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
        settingsFromJson(j.at("settings"), where, b.settings);
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
    const json settings = settingsToJson(b.settings);
    if (!settings.empty()) {
        j["settings"] = settings;
    }
    return j;
}

ProjectModel modelFromJson(const json& j) {
    requireObject(j, "The model", {"format", "version", "about", "floors"});
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
        requireObject(fj, where, {"number", "name", "level_m", "slab_thickness_cm", "beams"});
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
        model.floors.push_back(std::move(fm));
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
        j["floors"].push_back(fj);
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
