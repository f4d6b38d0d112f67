// Design of one stored beam from its record to everything the design produces: the four
// listings, the bar items of the steel store and the analysis the case files are made of.
#include "beams/beam_job.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <span>

#include <fmt/format.h>

#include "beams/beam_listings.h"
#include "core/error.h"
#include "core/sheet.h"
#include "core/tolerances.h"

namespace fs = std::filesystem;

namespace orvak::beams {

namespace {

const FlexurePoint* findPoint(const BeamDesignResult& result, int span, PointPlace place,
                              bool hogging) {
    for (const auto& p : result.flexurePoints) {
        if (p.span == span && p.place == place && p.hogging == hogging) {
            return &p;
        }
    }
    return nullptr;
}

double anchorageCm(double diameterMm) {
    return kAnchorageDiameters * diameterMm / 10.0;
}

float wholeCm(double cm) {
    return static_cast<float>(std::ceil(cm - core::kSingleRounding));
}

} // namespace

BeamDesignInput designInputFromRecord(const BeamRecord& record, BeamAnalysisInput model,
                                      BeamAnalysisResult analysis,
                                      std::vector<bars::BarProperties> barTable) {
    const BeamSettings& s = record.settings;
    BeamDesignInput in;
    in.model = std::move(model);
    in.analysis = std::move(analysis);
    in.barTable = std::move(barTable);

    for (const auto& span : record.spans) {
        std::string error;
        const auto geometry = sectionGeometry(span.sectionKind, span.dims, error);
        // validateBeam has checked every section; a failure here is a broken precondition.
        if (!geometry) {
            throw InputError(error);
        }
        in.sections.push_back(*geometry);
    }

    // The moment factor LdfactTxt acts at the far support of a single supported span and at
    // end supports whose rotation is restrained.
    const std::size_t n = record.spans.size();
    in.ldFactorAtSupport.assign(n + 1, false);
    if (n == 1 && record.supports[1].code == 2) {
        in.ldFactorAtSupport[1] = true;
    }
    for (const std::size_t j : {std::size_t{0}, n}) {
        if (record.supports[j].second == 1) {
            in.ldFactorAtSupport[j] = true;
        }
    }

    in.materials = {record.fc, record.fyMain, record.fyStirrups};

    // One cover serves both faces in flexure: the larger one, which gives the smaller d and
    // the deeper compression steel, both on the safe side.
    const double cover = std::max(record.coverTopCm, record.coverBottomCm);
    in.flexure.momFi = s.MomFiTxt;
    in.flexure.facRmax = s.FacRmaxTxt;
    in.flexure.facRmin = s.FacRminTxt;
    in.flexure.ldFact = s.LdfactTxt;
    in.flexure.coverCm = cover;
    in.flexure.compressionCoverCm = cover;

    in.bars.sideCoverCm = record.coverSideCm;
    in.bars.crackControlFyKgCm2 = record.fyMain;
    in.bars.tensionCoverCm = cover;
    if (s.SDIAMTXT > 0) {
        in.bars.stirrupDiameterMm = s.SDIAMTXT;
    }
    if (s.MINDCALC > 0) {
        in.bars.minDiameterMm = s.MINDCALC;
    }
    in.bars.maxDiameterMm = s.MAXDCALC;
    if (s.MINDIST > 0) {
        in.bars.minClearSpacingCm = s.MINDIST;
    }
    for (const float d : s.DSTXT) {
        if (d > 0) {
            in.bars.allowedDiametersMm.push_back(d);
        }
    }
    in.minTopBars = {std::max<int>(s.MINUPSQ, 0), std::max<double>(s.MINUPSD, 0.0)};
    in.minBottomBars = {std::max<int>(s.MINDNSQ, 0), std::max<double>(s.MINDNSD, 0.0)};

    in.shear.shearFi = s.ShearFiTxt;
    in.shear.vsMin = s.VsMinTxt;
    in.shear.stirrupDiameterMm = s.SDIAMTXT;
    in.shear.maxSpacingCm = s.SSPCTXT;
    in.shear.minSpacingCm = s.MinSSPCTXT;
    if (s.WIDTHLNK > 0) {
        in.shear.fourLegWidthCm = s.WIDTHLNK;
    }
    in.shear.stirrupCover = record.coverSideCm;
    in.shear.hookCm = s.angleheight[1];

    in.deflection.deflDivisor = s.DeflTxt;
    in.deflection.topCoverCm = record.coverTopCm;
    in.deflection.bottomCoverCm = record.coverBottomCm;
    in.deflection.sustainedLivePercent = record.sustainedLivePercent;
    in.deflection.durationMonths = record.effectiveLiveLoadMonths();

    in.depthDivisors = {s.THIKTXT[0], s.THIKTXT[1], s.THIKTXT[2], s.THIKTXT[3]};
    return in;
}

std::string listingBaseName(const BeamRecord& record) {
    std::string name = record.name;
    while (!name.empty() && (name.back() == ' ' || name.back() == '\0')) {
        name.pop_back();
    }
    if (name.empty()) {
        name = "Beam";
    }
    // The floor is part of the identification: every floor numbers its beams from 1 and
    // engineers reuse beam names from floor to floor, so without it the listings of one
    // floor's beam would overwrite another's.
    return core::sheetBaseName(fmt::format("F{}-{}_{}", record.floor, name, record.number));
}

std::vector<bars::SteelItem> beamSteelItems(const BeamRecord& record, const BeamDesignInput& input,
                                            const BeamDesignResult& result) {
    std::vector<bars::SteelItem> items;
    const int n = static_cast<int>(input.model.spans.size());
    auto add = [&](float quantity, double diameterMm, double lengthCm, std::string description) {
        bars::SteelItem item;
        const auto mark = static_cast<std::int16_t>(items.size() + 1);
        item.mainKey = bars::makeMainKey(static_cast<std::int32_t>(kBeamSteelKind), record.floor,
                                         record.number, mark, 0);
        item.element = bars::storedElementName(record.name);
        item.slab = record.floor;
        item.beam = record.number;
        item.mark = mark;
        item.general = static_cast<std::int16_t>(kBeamSteelKind);
        item.quantity = quantity;
        item.diameterMm = static_cast<float>(diameterMm);
        item.lengthCm = wholeCm(lengthCm);
        item.description = std::move(description);
        items.push_back(std::move(item));
    };
    auto spanLength = [&](int i) {
        return input.model.spans[static_cast<std::size_t>(i)].lengthCm;
    };

    // Where a bar runs out at the beam's end (joint 0 or n). On an end support it reaches the
    // support's far face, less the cover, and turns down or up in a standard 90-degree hook of
    // 12 diameters; at the free tip of an overhang it stops the cover short of the tip.
    // At an inner joint it goes on past the joint axis by its anchorage length.
    const double endCover = record.coverSideCm;
    auto beyondJoint = [&](int j, double diameterMm) {
        if (j > 0 && j < n) {
            return anchorageCm(diameterMm);
        }
        const StoredSupport& sup = record.supports[static_cast<std::size_t>(j)];
        if (!input.model.supports[static_cast<std::size_t>(j)].restrainsDisplacement) {
            return -endCover;
        }
        // The bar reaches the far face of the support less the cover and bends there. Where
        // the support's width is not known, the hooked development length ldh = 0.075 FY /
        // sqrt(Fc) db (ACI, at least 8 db and 15 cm) stands for it.
        const double db = diameterMm / 10.0;
        if (sup.widthCm > 0.0f) {
            return std::max(sup.widthCm / 2.0 - endCover, 0.0) + kHookDiameters * db;
        }
        const double ldh =
            std::max({0.075 * record.fyMain / std::sqrt(record.fc) * db, 8.0 * db, 15.0});
        return ldh + kHookDiameters * db;
    };
    // A span with a free outer joint is a cantilever: its top bars run out to the tip.
    auto isCantilever = [&](int i) {
        const auto& sup = input.model.supports;
        return (i == 0 && !sup.front().restrainsDisplacement) ||
               (i == n - 1 && !sup.back().restrainsDisplacement);
    };

    // Bottom bars: the field's bars over the whole span.
    for (int i = 0; i < n; ++i) {
        const FlexurePoint* p = findPoint(result, i, PointPlace::Field, false);
        if (p && p->tensionBars.found && p->tensionBars.count > 0) {
            const double d = p->tensionBars.diameterMm;
            add(static_cast<float>(p->tensionBars.count), d,
                spanLength(i) + beyondJoint(i, d) + beyondJoint(i + 1, d),
                fmt::format("bottom span {}", i + 1));
        }
    }
    // Top bars over each support: the larger choice of its two faces, reaching 0.3 of each
    // adjacent span (the whole of a cantilever), or the beam's end where there is no span.
    // The free tip of a cantilever has no bars of its own: those of its support reach it.
    for (int j = 0; j <= n; ++j) {
        if (!input.model.supports[static_cast<std::size_t>(j)].restrainsDisplacement &&
            (j == 0 || j == n)) {
            continue;
        }
        const FlexurePoint* left =
            j > 0 ? findPoint(result, j - 1, PointPlace::Right, true) : nullptr;
        const FlexurePoint* right = j < n ? findPoint(result, j, PointPlace::Left, true) : nullptr;
        const BarChoice* chosen = nullptr;
        for (const FlexurePoint* p : {left, right}) {
            if (p && p->tensionBars.found && p->tensionBars.count > 0 &&
                (!chosen || p->tensionBars.areaCm2 > chosen->areaCm2)) {
                chosen = &p->tensionBars;
            }
        }
        if (!chosen) {
            continue;
        }
        const double d = chosen->diameterMm;
        auto into = [&](int span, int farJoint) {
            return isCantilever(span) ? spanLength(span) + beyondJoint(farJoint, d)
                                      : kTopBarSpanFraction * spanLength(span);
        };
        const double length = (j > 0 ? into(j - 1, j - 1) : beyondJoint(j, d)) +
                              (j < n ? into(j, j + 1) : beyondJoint(j, d));
        add(static_cast<float>(chosen->count), d, length, fmt::format("top support {}", j + 1));
    }
    // Top bars of the field: where the field hogs they run the whole span and are anchored
    // like the bottom bars; otherwise they are the two hangers that carry the stirrups between
    // the support bars, lapped 40 diameters into them. A cantilever has its support's bars.
    for (int i = 0; i < n; ++i) {
        const FlexurePoint* p = findPoint(result, i, PointPlace::Field, true);
        if (isCantilever(i) || !p || !p->tensionBars.found || p->tensionBars.count <= 0) {
            continue;
        }
        const double d = p->tensionBars.diameterMm;
        const double length =
            p->flexure.tensionAreaCm2 > 0.0
                ? spanLength(i) + beyondJoint(i, d) + beyondJoint(i + 1, d)
                : (1.0 - 2.0 * kTopBarSpanFraction) * spanLength(i) + 2.0 * anchorageCm(d);
        add(static_cast<float>(p->tensionBars.count), d, length, fmt::format("top span {}", i + 1));
    }
    // Stirrups: the closest spacing of the span's points over the whole span.
    for (int i = 0; i < n; ++i) {
        const ShearResult* governing = nullptr;
        for (const auto& sp : result.shearPoints) {
            if (sp.span == i && sp.shear.ok() && sp.shear.spacingCm > 0 &&
                (!governing || sp.shear.spacingCm < governing->spacingCm)) {
                governing = &sp.shear;
            }
        }
        if (!governing) {
            continue;
        }
        const auto count = static_cast<float>(
            std::floor(spanLength(i) / std::max(placedSpacingCm(governing->spacingCm), 0.1)) + 1);
        add(count, governing->diameterMm, governing->cutLengthCm,
            fmt::format("stirrups span {}", i + 1));
        if (governing->innerCutLengthCm > 0) {
            add(count, governing->diameterMm, governing->innerCutLengthCm,
                fmt::format("inner stirrups {}", i + 1));
        }
    }
    return items;
}

bars::BarPropertyTable designBarTable(const fs::path& generalFolder) {
    bars::BarPropertyTable chosen = bars::LoadBarPropertiesOrBuiltIn(generalFolder);
    std::erase_if(chosen.rows, [](const bars::BarProperties& r) {
        return !(r.diameterMm > 0 && r.areaCm2 > 0);
    });
    if (chosen.rows.empty()) {
        throw InputError(fmt::format(
            "The bar table in {} holds no bar: enter the bar table (diameters, weights and "
            "areas) before designing a beam.",
            generalFolder.string()));
    }
    // A bar whose diameter or area no bar can have would be chosen in absurd numbers (or
    // none): the table is refused, naming the row, before anything is designed.
    for (std::size_t i = 0; i < chosen.rows.size(); ++i) {
        const bars::BarProperties& r = chosen.rows[i];
        const double round = std::numbers::pi * r.diameterMm * r.diameterMm / 400.0;
        if (!(r.diameterMm >= kMinBarDiameterMm && r.diameterMm <= kMaxBarDiameterMm)) {
            throw InputError(fmt::format(
                "The bar table {} in {}: the bar of diameter {} mm (row {}) is not a bar "
                "diameter; diameters run from {} to {} mm.",
                bars::kRoundbarFile, generalFolder.string(), r.diameterMm, i + 1, kMinBarDiameterMm,
                kMaxBarDiameterMm));
        }
        if (!(r.areaCm2 >= kBarAreaLeast * round && r.areaCm2 <= kBarAreaMost * round)) {
            throw InputError(fmt::format(
                "The bar table {} in {}: the area of the {} mm bar (row {}) is {} cm2, where a "
                "round bar of that diameter has {:.2f} cm2; correct the area before designing.",
                bars::kRoundbarFile, generalFolder.string(), r.diameterMm, i + 1, r.areaCm2,
                round));
        }
    }
    return chosen;
}

BeamDesignOutputs designBeamOutputs(const fs::path& projectFolder, const BeamRecord& record,
                                    const std::vector<bars::BarProperties>& barTable, int scheme) {
    BeamDesignOutputs out;
    const std::string problem = validateBeam(record);
    if (!problem.empty()) {
        throw InputError(fmt::format("Floor {}, beam {} ({}): {}.", record.floor, record.number,
                                     record.name, problem));
    }

    BeamAnalysisInput model = analysisInput(record, scheme);
    BeamAnalysisResult analysis = analyzeBeam(model);
    if (!analysis.ok()) {
        out.status = BeamJobStatus::AnalysisFailed;
        out.failures.push_back(analysis.message);
        return out;
    }
    const BeamDesignInput input =
        designInputFromRecord(record, std::move(model), std::move(analysis), barTable);
    const BeamDesignResult design = designBeam(input);
    out.failures = design.failures;
    out.messages = design.messages;
    out.status = design.ok() ? BeamJobStatus::Designed : BeamJobStatus::ChecksFailed;
    out.items = beamSteelItems(record, input, design);

    const std::string base = listingBaseName(record);
    const std::pair<std::string_view, core::Sheet> listings[] = {
        {kShearListingExt, shearListing(input, design)},
        {kAnalysisListingExt, analysisListing(input.model, input.analysis)},
        {kFlexureListingExt, flexureListing(input, design)},
        {kDeflectionListingExt, deflectionListing(design.deflection)},
    };
    for (const auto& [ext, sheet] : listings) {
        out.listings.push_back({projectFolder / (base + std::string(ext)), sheet.bytes()});
    }
    out.analysis = input.analysis;
    return out;
}

} // namespace orvak::beams
