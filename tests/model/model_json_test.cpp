// Tests of the JSON model: messages that name the floor, beam, span and field; nothing written
// for a bad model; singles that survive a write and a read.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cmath>
#include <csignal>

#include "core/error.h"
#include "model/model_json.h"
#include "model/project_model.h"
#include "support/temp_dir.h"

namespace orvak::model {
namespace {

using namespace orvak::beams;

namespace fs = std::filesystem;
using nlohmann::json;

json twoSpanModel() {
    return json::parse(R"({
      "format": "orvak-model", "version": 1,
      "floors": [{"number": 1, "name": "First", "level_m": 3.2, "slab_thickness_cm": 15,
        "beams": [{"name": "B1", "fc": 250, "fy": 4200,
          "spans": [
            {"length_m": 5, "section": {"kind": 3, "dims_cm": [100, 15, 30, 0, 60]},
             "loads": [{"kind": "uniform", "dead": 2, "live": 1},
                       {"kind": "triangular", "dead": 1, "live": 0.5, "peak": "left"}]},
            {"length_m": 4.5, "section": {"kind": 2, "dims_cm": [0, 0, 30, 0, 60]},
             "loads": [{"kind": "partial", "dead": 1.1, "live": 0.3, "a_m": 1, "length_m": 2},
                       {"kind": "point", "dead": 3, "live": 1, "a_m": 2.25}]}],
          "supports": [{"code": 2}, {"code": 2, "fixed": true}, {"code": 2}],
          "settings": {"FACDEADL": [1.2, 1.2], "FACDAYNL": [1.6, 0.0], "MomFiTxt": 0}}]}]})");
}

TEST(ModelJsonRead, WhatAModelLeavesOutTakesItsDefault) {
    const ProjectModel m = modelFromJson(twoSpanModel());
    ASSERT_EQ(m.floors.size(), 1u);
    const BeamRecord& b = m.floors[0].beams.at(0);
    EXPECT_EQ(b.number, 1);
    EXPECT_EQ(b.fyStirrups, 4200.0f); // defaults to fy
    EXPECT_EQ(b.supports[1].second, 1);
    EXPECT_EQ(b.settings.MomFiTxt, 0.0f); // saved as zero; the design uses 0.9
    EXPECT_EQ(b.settings.DeflTxt, 360.0f);
    EXPECT_EQ(b.sustainedLivePercent, 0.0f);
    EXPECT_EQ(b.liveLoadMonths, 60.0f);
}

TEST(ModelJsonRead, MessagesNameBeamSpanAndField) {
    struct Case {
        const char* name;
        const char* pointer; // JSON pointer of the value to replace
        json value;
        const char* expected;
    };
    const json thirtyOne = [] {
        json spans = json::array();
        for (int i = 0; i < 31; ++i) {
            spans.push_back(twoSpanModel()["floors"][0]["beams"][0]["spans"][1]);
        }
        return spans;
    }();
    // Beam 1000 would share its steel items' key with beam 1 (three digits of the number).
    const json thousandBeams = [] {
        json beams = json::array();
        for (int i = 0; i < 1000; ++i) {
            beams.push_back(twoSpanModel()["floors"][0]["beams"][0]);
        }
        return beams;
    }();
    const Case cases[] = {
        {"a thousand beams on a floor", "/floors/0/beams", thousandBeams,
         "Floor 1: has 1000 beams; a floor holds at most 999"},
        {"zero span", "/floors/0/beams/0/spans/1/length_m", 0,
         "Floor 1, beam 1 (B1), span 2: the length must be more than 0 m."},
        {"zero section", "/floors/0/beams/0/spans/0/section/dims_cm", json{0, 0, 0, 0, 0},
         "Floor 1, beam 1 (B1), span 1: the web width of the section must be a positive number of "
         "cm."},
        {"negative dimension", "/floors/0/beams/0/spans/0/section/dims_cm/4", -60,
         "Floor 1, beam 1 (B1), span 1: section dims_cm[4] is negative."},
        {"31 spans", "/floors/0/beams/0/spans", thirtyOne,
         "Floor 1, beam 1 (B1): has 31 spans; a beam has at most 30."},
        {"not a number", "/floors/0/beams/0/spans/0/loads/0/dead", "NaN",
         "Floor 1, beam 1 (B1), span 1, load 1: dead must be a number."},
        {"overflow", "/floors/0/beams/0/fc", 1e39,
         "Floor 1, beam 1 (B1): fc is far too large a number."},
        {"unknown kind", "/floors/0/beams/0/spans/1/loads/0/kind", "snow",
         "Floor 1, beam 1 (B1), span 2, load 1: kind \"snow\" is not one of"},
        {"misspelt field", "/floors/0/beams/0/spans/1/loads/1/a", 1,
         "span 2, load 2: \"a\" is not a known field."},
        {"point off the span", "/floors/0/beams/0/spans/1/loads/1/a_m", 9,
         "span 2, point load: a_m must lie within the span"},
        {"unknown setting", "/floors/0/beams/0/settings/MomFi", 0.9,
         "\"MomFi\" is not a beam setting."},
        {"short factor pair", "/floors/0/beams/0/settings/FACDEADL", json{1.4},
         "settings FACDEADL must be an array of 2 numbers."},
        {"sustained share above the whole", "/floors/0/beams/0/sustained_live_percent", 150,
         "Floor 1, beam 1 (B1): the sustained part of the live load must be 0 to 100 %."},
        {"fixed free joint", "/floors/0/beams/0/supports/0", json{{"code", 0}, {"fixed", true}},
         "Floor 1, beam 1 (B1), support 1: a free joint cannot be fixed"},
        {"no support", "/floors/0/beams/0/supports",
         json{{{"code", 0}}, {{"code", 0}}, {{"code", 0}}},
         "Floor 1, beam 1 (B1): no joint is supported"},
        {"no live load", "/floors/0/beams/0/settings/FACDAYNL", json{0, 0},
         "the first live-load factor FACDAYNL must be more than 0."},
        {"span below reason", "/floors/0/beams/0/spans/0/length_m", 1e-45,
         "Floor 1, beam 1 (B1), span 1: the length must be at least 0.1 m."},
        {"span beyond reason", "/floors/0/beams/0/spans/0/length_m", 1e6,
         "Floor 1, beam 1 (B1), span 1: the length must be at most 50 m."},
        {"load beyond reason", "/floors/0/beams/0/spans/0/loads/0/dead", 1e9,
         "span 1, uniform load: dead and live must each lie within"},
        {"line break in a name", "/floors/0/beams/0/name", "B1\nB2",
         "Floor 1, beam 1 (B1\nB2): name holds a control character"},
        {"wrong version", "/version", 2, "The model: version must be 1."},
        // 2^64 - 1 read as a signed 64-bit number would be -1, a plausible support code.
        {"huge whole number", "/floors/0/beams/0/supports/0/code",
         json(std::uint64_t{18446744073709551615U}), "code must be a whole number from -32768"},
        {"settings value of stored blanks", "/floors/0/beams/0/settings/MomFiTxt", 1.35e-19,
         "the setting MomFiTxt is 1.35e-19: it must be 0 (the code's value) or from 0.5 to 1"},
    };
    for (const Case& c : cases) {
        json model = twoSpanModel();
        model[json::json_pointer(c.pointer)] = c.value;
        try {
            modelFromJson(model);
            ADD_FAILURE() << c.name << ": accepted";
        } catch (const InputError& e) {
            EXPECT_NE(std::string(e.what()).find(c.expected), std::string::npos)
                << c.name << ": " << e.what();
        }
    }
}

TEST(ModelJsonRead, APartialLoadMayEndExactlyAtTheSupport) {
    // 1.2 + 4.8 in singles adds up a rounding above 6: still within the span, and the
    // analysis sees a load that ends at the support.
    json model = twoSpanModel();
    model["floors"][0]["beams"][0]["spans"][1]["length_m"] = 6.0;
    model["floors"][0]["beams"][0]["spans"][1]["loads"][0]["a_m"] = 1.2;
    model["floors"][0]["beams"][0]["spans"][1]["loads"][0]["length_m"] = 4.8;
    const BeamRecord b = modelFromJson(model).floors[0].beams[0];
    const BeamAnalysisInput in = analysisInput(b, 2);
    const SpanLoad& partial = in.spans[1].loads[loadIndex(LoadKind::PartialUniform)];
    EXPECT_LE(partial.startCm + partial.lengthCm, in.spans[1].lengthCm);
    EXPECT_TRUE(analyzeBeam(in).ok());
}

TEST(ModelJsonImport, BadBeamWritesNothingAndNothingIsOverwritten) {
    test::TempDir dir;
    json model = twoSpanModel();
    model["floors"].push_back(model["floors"][0]);
    model["floors"][1]["number"] = 2;
    model["floors"][1]["beams"][0]["spans"][0]["length_m"] = -1;
    EXPECT_THROW(writeProjectModel(dir.path(), modelFromJson(model)), InputError);
    EXPECT_TRUE(fs::is_empty(dir.path()));

    writeProjectModel(dir.path(), modelFromJson(twoSpanModel()));
    const auto before = fs::file_size(dir / "BEAMS.1");
    EXPECT_THROW(writeProjectModel(dir.path(), modelFromJson(twoSpanModel())), InputError);
    EXPECT_EQ(fs::file_size(dir / "BEAMS.1"), before);
}

TEST(ModelJsonImport, AnImportCutOffByAFullDiskLeavesNothingAndCanBeRetried) {
    // Floor 1 holds one beam (BEAMS.1: 16,699 bytes), floor 2 three (BEAMS.2: 50,097 bytes).
    // A child process whose files may grow to 30,000 bytes stands for a disk that fills up
    // while BEAMS.2 is written: the import fails, and must leave no BEAMS.1 behind to block
    // the next try.
    test::TempDir dir;
    json model = twoSpanModel();
    model["floors"].push_back(model["floors"][0]);
    model["floors"][1]["number"] = 2;
    model["floors"][1]["beams"].push_back(model["floors"][1]["beams"][0]);
    model["floors"][1]["beams"].push_back(model["floors"][1]["beams"][0]);
    const ProjectModel pm = modelFromJson(model);
    const pid_t child = ::fork();
    if (child == 0) {
        ::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{30000, 30000};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        try {
            writeProjectModel(dir.path(), pm);
        } catch (const FileError&) {
            ::_exit(0);
        }
        ::_exit(1);
    }
    int status = -1;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0) << "the import did not fail on the full disk";
    EXPECT_TRUE(fs::is_empty(dir.path()));
    writeProjectModel(dir.path(), pm);
    EXPECT_EQ(readProjectModel(dir.path()).floors.size(), 2u);
}

TEST(ModelJsonWrite, SinglesReadBackExactly) {
    ProjectModel m = modelFromJson(twoSpanModel());
    BeamRecord& b = m.floors[0].beams[0];
    // Values without a short decimal double twin, and ones that are not whole.
    b.spans[0].lengthM = 1.0f / 3.0f;
    b.spans[1].loads[loadIndex(LoadKind::PartialUniform)].dead = 0.1f;
    b.fc = std::nextafter(1000.0f, 0.0f); // the largest single below the bound
    b.settings.MaxLenTxt = 3.4028235e38f; // a setting the design does not use yet
    b.coverSideCm = -0.0f;                // a negative zero keeps its sign bit

    const json j = modelToJson(m);
    EXPECT_EQ(j["floors"][0]["beams"][0]["spans"][1]["loads"][0]["dead"].dump(), "0.1");
    const ProjectModel back = modelFromJson(json::parse(j.dump()));
    EXPECT_EQ(back.floors[0].beams[0], b);
    EXPECT_TRUE(std::signbit(back.floors[0].beams[0].coverSideCm));
}

TEST(ModelJsonColumns, ColumnsAndGroupsOfFloorsAndTheFootingLevelRoundTrip) {
    json j = twoSpanModel();
    j["floors"][0]["columns"] = json::parse(R"([
        {"name": "C1", "group": 1, "height_cm": 305, "dims_cm": [30, 40], "pu_t": 62.5,
         "mx_tm": [2.1, -1.0]},
        {"name": "C2", "group": 0, "type": 2, "height_cm": 305, "dims_cm": [40], "pu_t": 90,
         "my_tm": [0.7]}])");
    j["floors"][0]["column_groups"] = json::parse(R"([
        {"name": "Gr-C1", "text": "Edge", "dims_cm": [30, 40], "sustained": true,
         "settings": {"Fc": 300, "PhiPercent": [65, 75, 70, 70, 70, 75, 70]}}])");
    j["footing_level"] = json::parse(R"({
        "columns": [{"name": "F1", "group": 1, "height_cm": 150, "dims_cm": [40, 40],
                     "pu_t": 70}],
        "column_groups": [{"name": "Gr-C1", "dims_cm": [40, 40], "cover_cm": 5}]})");
    const ProjectModel m = modelFromJson(j);
    ASSERT_EQ(m.floors[0].columns.size(), 2u);
    const columns::Column& c1 = m.floors[0].columns[0];
    EXPECT_EQ(c1.group, 1);
    EXPECT_EQ(c1.type, 1); // the type a column leaves out is the rectangle
    EXPECT_FLOAT_EQ(c1.x.m1, -1.0f);
    EXPECT_FLOAT_EQ(m.floors[0].columns[1].y.m2, 0.7f);
    const columns::ColumnGroup& g = m.floors[0].groups.at(0);
    EXPECT_EQ(g.secondAxis, 1);
    EXPECT_EQ(g.settings.Fc, 300);
    EXPECT_FLOAT_EQ(g.settings.PhiPercent[0], 65.0f);
    EXPECT_EQ(g.settings.FY, columns::defaultColumnSettings().FY);
    ASSERT_EQ(m.footingGroups.size(), 1u);

    // JSON and back, and the project's files and back, give the same model.
    EXPECT_EQ(modelFromJson(json::parse(modelToJson(m).dump())), m);
    test::TempDir dir;
    const fs::path project = dir / "Cols.prj";
    fs::create_directories(project);
    writeProjectModel(project, m);
    EXPECT_TRUE(fs::exists(project / "COLUMNS.101"));
    EXPECT_TRUE(fs::exists(project / "FCOLSGRP.DAT"));
    EXPECT_EQ(readProjectModel(project), m);

    // A column names a group of its own level.
    j["footing_level"]["columns"][0]["group"] = 2;
    try {
        modelFromJson(j);
        ADD_FAILURE() << "a column of a missing group was read";
    } catch (const InputError& e) {
        EXPECT_STREQ(e.what(), "The footing level, column 1: group must be 0 (none) or a group "
                               "of its level, 1 to 1.");
    }
}

TEST(ModelJsonFootings, FootingGroupsRoundTripAndTheirMainDataIsChecked) {
    json j = twoSpanModel();
    j["footing_level"] = json::parse(R"({
        "columns": [{"name": "F1", "group": 1, "height_cm": 150, "dims_cm": [30, 40],
                     "pu_t": 70},
                    {"name": "F2", "group": 2, "height_cm": 150, "dims_cm": [40, 40],
                     "pu_t": 120}],
        "column_groups": [{"name": "Gr-C1", "dims_cm": [30, 40]},
                          {"name": "Gr-C2", "dims_cm": [40, 40]}],
        "footing_groups": [
          {"name": "Gr-Ft1", "kind": "isolated", "columns": [{"column_group": 2, "cx_cm": 15}],
           "settings": {"SoilCapacity": 1.5, "MinDepth": 35}},
          {"name": "Gr-Ft2", "kind": "combined",
           "columns": [{"column_group": 1, "cx_cm": 25}, {"column_group": 2, "cx_cm": 325.5}],
           "state": 1, "a_cm": 180, "b_cm": 400, "h_cm": 57.5,
           "bars_y": {"count": 12, "diameter_mm": 16, "area_cm2": 24.13, "length_cm": 385}},
          {"name": "P1", "kind": "pile", "columns": [{"column_group": 1}],
           "piles": {"count": 6, "diameter_cm": 50, "surface_friction": 2.5}}]})");
    const ProjectModel m = modelFromJson(j);
    ASSERT_EQ(m.footingDesignGroups.size(), 3u);
    const footings::FootingGroup& iso = m.footingDesignGroups[0];
    EXPECT_EQ(iso.kind, footings::FootingKind::Isolated);
    EXPECT_EQ(iso.columns[0].group, 2);
    EXPECT_EQ(iso.columns[0].groupName, "Gr-C2"); // kept with the number, as the file keeps it
    EXPECT_FLOAT_EQ(iso.settings.soilCapacity, 1.5f);
    EXPECT_EQ(iso.settings.Fc, footings::defaultFootingSettings().Fc);
    const footings::FootingGroup& comb = m.footingDesignGroups[1];
    EXPECT_FLOAT_EQ(comb.columns[1].cxCm, 325.5f);
    EXPECT_EQ(comb.status, footings::FootingStatus::Designed);
    EXPECT_EQ(comb.barsY.count, 12);
    EXPECT_EQ(m.footingDesignGroups[2].piles, 6);
    EXPECT_FLOAT_EQ(m.footingDesignGroups[2].pileLengthCm, 1200.0f); // left out: the default

    EXPECT_EQ(modelFromJson(json::parse(modelToJson(m).dump())), m);
    test::TempDir dir;
    const fs::path project = dir / "Foot.prj";
    fs::create_directories(project);
    writeProjectModel(project, m);
    EXPECT_EQ(fs::file_size(project / "FootsGRP.DAT"), 3u * 852u);
    EXPECT_EQ(readProjectModel(project), m);

    // The system's messages of saving a group's main data, naming the group.
    const auto message = [](const json& model) {
        try {
            modelFromJson(model);
        } catch (const InputError& e) {
            return std::string(e.what());
        }
        return std::string("read");
    };
    json bad = j;
    bad["footing_level"]["footing_groups"][1]["columns"][1]["cx_cm"] = 25;
    EXPECT_EQ(message(bad), "The footing level, footing group 2: CX1 IS GREATER OR EQUAL CX2.");
    bad = j;
    bad["footing_level"]["footing_groups"][0]["columns"][0]["cy_cm"] = -5;
    EXPECT_EQ(message(bad),
              "The footing level, footing group 1: Footing dimension is not suitable for column.");
    bad = j;
    bad["footing_level"]["footing_groups"][0]["columns"][0]["column_group"] = 3;
    EXPECT_EQ(message(bad), "The footing level, footing group 1, column 1: column_group must be "
                            "a column group of the footing level, 1 to 2.");
    bad = j;
    bad["footing_level"]["footing_groups"][1]["columns"].erase(1);
    EXPECT_EQ(message(bad), "The footing level, footing group 2: columns must be an array of two "
                            "columns.");
}

} // namespace
} // namespace orvak::model
