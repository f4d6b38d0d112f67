// orvak-cli beam commands: analyse one continuous beam under a load-case scheme and print its
// case results, envelope and service deflections as JSON or as a readable table.
#include <fmt/format.h>

#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <regex>
#include <sstream>

#include "beams/case_files.h"
#include "cli/commands.h"
#include "core/error.h"
#include "model/model_json.h"

namespace fs = std::filesystem;
using nlohmann::json;

namespace orvak::cli {

namespace {

constexpr double kKgCmPerTm = 100000.0;
constexpr double kKgPerT = 1000.0;
constexpr double kCmPerM = 100.0;

struct AnalyseOptions {
    std::string input;
    int scheme = beams::kDefaultCaseScheme;
    bool json = false;
    int floor = 0;
    int beam = 0;
    std::string casesFolder;
};

const beams::BeamRecord& pickBeam(const model::ProjectModel& model, const AnalyseOptions& o) {
    if (o.floor <= 0 || o.beam <= 0) {
        throw InputError("A model holds several beams: give --floor N and --beam N.");
    }
    for (const auto& f : model.floors) {
        if (f.floor.number == o.floor) {
            if (static_cast<std::size_t>(o.beam) > f.beams.size()) {
                throw InputError(fmt::format("Floor {} has {} beams; there is no beam {}.", o.floor,
                                             f.beams.size(), o.beam));
            }
            return f.beams[static_cast<std::size_t>(o.beam) - 1];
        }
    }
    throw InputError(fmt::format("The model has no floor {}.", o.floor));
}

// The beam to analyse, and the folder its case files go to (empty: none).
std::pair<beams::BeamRecord, fs::path> loadBeam(const AnalyseOptions& o) {
    std::error_code ec;
    if (fs::is_directory(o.input, ec)) {
        const model::ProjectModel project = model::readProjectModel(o.input);
        beams::BeamRecord beam = pickBeam(project, o);
        const std::string problem = beams::validateBeam(beam);
        if (!problem.empty()) {
            throw InputError(fmt::format("Floor {}, beam {}: {}.", o.floor, o.beam, problem));
        }
        return {beam, fs::path(o.input)};
    }
    const json j = model::readJsonFile(o.input);
    const fs::path cases = o.casesFolder.empty() ? fs::path() : fs::path(o.casesFolder);
    if (j.is_object() && j.contains("format")) {
        return {pickBeam(model::modelFromJson(j), o), cases};
    }
    std::string where = "Beam";
    if (j.is_object() && j.contains("name") && j.at("name").is_string()) {
        where += " " + j.at("name").get<std::string>();
    }
    return {model::beamFromJson(j, where), cases};
}

json caseJson(const beams::CaseResult& c) {
    json j;
    json supportMoments = json::array();
    json reactions = json::array();
    for (std::size_t i = 0; i < c.supportMomentsKgCm.size(); ++i) {
        supportMoments.push_back(c.supportMomentsKgCm[i] / kKgCmPerTm);
        reactions.push_back(c.reactionsKg[i] / kKgPerT);
    }
    json endShears = json::array();
    json maxM = json::array();
    json maxX = json::array();
    json minM = json::array();
    json minX = json::array();
    json tenths = json::array();
    for (std::size_t s = 0; s < c.spans.size(); ++s) {
        const auto& f = c.spans[s];
        endShears.push_back({f.shearLeftKg / kKgPerT, f.shearRightKg / kKgPerT});
        maxM.push_back(f.maxMoment.momentKgCm / kKgCmPerTm);
        maxX.push_back(f.maxMoment.xCm / kCmPerM);
        minM.push_back(f.minMoment.momentKgCm / kKgCmPerTm);
        minX.push_back(f.minMoment.xCm / kCmPerM);
        json points = json::array();
        for (int k = 0; k <= 10; ++k) {
            const beams::Station& st = c.tenthPoint(static_cast<int>(s), k);
            points.push_back({{"x_m", st.xCm / kCmPerM},
                              {"moment_tm", st.momentKgCm / kKgCmPerTm},
                              {"shear_t", st.shearKg / kKgPerT}});
        }
        tenths.push_back(points);
    }
    j["support_moments_tm"] = supportMoments;
    j["end_shears_t"] = endShears;
    j["reactions_t"] = reactions;
    j["span_max_moment_tm"] = maxM;
    j["span_max_moment_x_m"] = maxX;
    j["span_min_moment_tm"] = minM;
    j["span_min_moment_x_m"] = minX;
    j["tenth_points"] = tenths;
    return j;
}

json resultJson(const beams::BeamAnalysisResult& r) {
    json j;
    j["cases"] = json::array();
    for (const auto& c : r.cases) {
        j["cases"].push_back(caseJson(c));
    }
    const auto& e = r.envelope;
    json env;
    const auto scaled = [](const std::vector<double>& v, double unit) {
        json a = json::array();
        for (const double x : v) {
            a.push_back(x / unit);
        }
        return a;
    };
    const auto values = [](const std::vector<beams::EnvelopeValue>& v, double unit) {
        json a = json::array();
        for (const auto& x : v) {
            a.push_back(x.value / unit);
        }
        return a;
    };
    env["support_moment_min_tm"] = scaled(e.supportMomentMinKgCm, kKgCmPerTm);
    env["support_moment_max_tm"] = scaled(e.supportMomentMaxKgCm, kKgCmPerTm);
    env["span_moment_max_tm"] = values(e.spanMomentMax, kKgCmPerTm);
    env["span_moment_min_tm"] = values(e.spanMomentMin, kKgCmPerTm);
    env["shear_abs_max_t"] = values(e.spanShearAbsMax, kKgPerT);
    j["envelope"] = env;
    const auto deflections = [](const beams::ServiceCase& s) {
        json a = json::array();
        for (const auto& d : s.maxDeflections) {
            // A span that does not sag (an overhang under an uplift) reports 0, never -0.
            a.push_back(d.deflectionMm + 0.0);
        }
        return a;
    };
    j["service_deflection_mm"] = {{"dead", deflections(r.service.dead)},
                                  {"live", deflections(r.service.live)},
                                  {"dead_live", deflections(r.service.total)}};
    return j;
}

// A value that rounds to zero prints without a sign: "-0.000" would make a reader look for a
// hogging moment that is not there.
std::string withoutNegativeZeros(std::string text) {
    static const std::regex negativeZero(R"((^|[^\d.])-(0\.0+)(?![\d]))");
    return std::regex_replace(text, negativeZero, "$1 $2");
}

void printTableText(const beams::BeamRecord& beam, const beams::BeamAnalysisResult& r, int scheme,
                    std::ostream& out) {
    out << fmt::format("Beam {}: {} spans, case scheme {}, {} cases\n", beam.name,
                       beam.spans.size(), scheme, r.cases.size());
    for (std::size_t i = 0; i < r.cases.size(); ++i) {
        const auto& c = r.cases[i];
        out << fmt::format("\nCase {}\n", i + 1);
        out << fmt::format("{:>8} {:>12} {:>12}\n", "Support", "M (t*m)", "R (t)");
        for (std::size_t j = 0; j < c.supportMomentsKgCm.size(); ++j) {
            out << fmt::format("{:>8} {:>12.3f} {:>12.3f}\n", j + 1,
                               c.supportMomentsKgCm[j] / kKgCmPerTm, c.reactionsKg[j] / kKgPerT);
        }
        out << fmt::format("{:>8} {:>10} {:>10} {:>10} {:>8} {:>10} {:>8}\n", "Span", "V left",
                           "V right", "M max", "x (m)", "M min", "x (m)");
        for (std::size_t s = 0; s < c.spans.size(); ++s) {
            const auto& f = c.spans[s];
            out << fmt::format("{:>8} {:>10.3f} {:>10.3f} {:>10.3f} {:>8.2f} {:>10.3f} {:>8.2f}\n",
                               s + 1, f.shearLeftKg / kKgPerT, f.shearRightKg / kKgPerT,
                               f.maxMoment.momentKgCm / kKgCmPerTm, f.maxMoment.xCm / kCmPerM,
                               f.minMoment.momentKgCm / kKgCmPerTm, f.minMoment.xCm / kCmPerM);
        }
    }
    out << "\nEnvelope\n";
    out << fmt::format("{:>8} {:>12} {:>12}\n", "Support", "M min", "M max");
    for (std::size_t j = 0; j < r.envelope.supportMomentMinKgCm.size(); ++j) {
        out << fmt::format("{:>8} {:>12.3f} {:>12.3f}\n", j + 1,
                           r.envelope.supportMomentMinKgCm[j] / kKgCmPerTm,
                           r.envelope.supportMomentMaxKgCm[j] / kKgCmPerTm);
    }
    out << fmt::format("{:>8} {:>10} {:>10} {:>10} {:>10} {:>10} {:>10}\n", "Span", "M max",
                       "M min", "|V| max", "D (mm)", "L (mm)", "D+L (mm)");
    for (std::size_t s = 0; s < r.envelope.spanMomentMax.size(); ++s) {
        out << fmt::format("{:>8} {:>10.3f} {:>10.3f} {:>10.3f} {:>10.2f} {:>10.2f} {:>10.2f}\n",
                           s + 1, r.envelope.spanMomentMax[s].value / kKgCmPerTm,
                           r.envelope.spanMomentMin[s].value / kKgCmPerTm,
                           r.envelope.spanShearAbsMax[s].value / kKgPerT,
                           r.service.dead.maxDeflections[s].deflectionMm,
                           r.service.live.maxDeflections[s].deflectionMm,
                           r.service.total.maxDeflections[s].deflectionMm);
    }
}

void printTable(const beams::BeamRecord& beam, const beams::BeamAnalysisResult& r, int scheme,
                std::ostream& out) {
    std::ostringstream text;
    printTableText(beam, r, scheme, text);
    out << withoutNegativeZeros(text.str());
}

} // namespace

void addBeamCommands(CLI::App& app, CommandContext& context) {
    auto* beam = app.add_subcommand("beam", "Analyse continuous beams.");
    beam->require_subcommand(1);

    auto o = std::make_shared<AnalyseOptions>();
    auto* analyse = beam->add_subcommand(
        "analyse", "Analyse one beam under a load-case scheme: moments, shears, reactions, "
                   "envelope and service deflections.");
    analyse
        ->add_option("input", o->input,
                     "A JSON file with one beam object or a whole model, or a project folder")
        ->required();
    analyse
        ->add_option("--scheme", o->scheme,
                     fmt::format("Load-case scheme 1, 2 or 3 (default {}: {})",
                                 beams::kDefaultCaseScheme,
                                 beams::caseSchemeName(beams::kDefaultCaseScheme)))
        ->check(CLI::Range(1, 3));
    analyse->add_flag("--json", o->json, "Print the results as JSON");
    analyse->add_option("--floor", o->floor, "Floor number, for a model or a project");
    analyse->add_option("--beam", o->beam, "Beam number on the floor, for a model or a project");
    analyse->add_option("--cases-dir", o->casesFolder,
                        "Folder for the case files of a JSON input (a project gets its own)");
    analyse->callback([&context, o] {
        context.action = [o] {
            const auto [beam, casesFolder] = loadBeam(*o);
            const beams::BeamAnalysisResult result =
                casesFolder.empty() ? beams::analyzeBeam(beams::analysisInput(beam, o->scheme))
                                    : beams::analyseBeamWithCaseFiles(casesFolder, beam, o->scheme);
            if (!result.ok()) {
                std::cerr << result.message << "\n";
                return 1;
            }
            if (o->json) {
                std::cout << resultJson(result).dump(2) << "\n";
            } else {
                printTable(beam, result, o->scheme, std::cout);
            }
            return 0;
        };
    });
}

} // namespace orvak::cli
