// Choice of the main bars of a design point from a required steel area: count, diameter and
// layers, from the bar table, checked against the clear spacing the beam width allows.
#include "beams/bar_selection.h"

#include <algorithm>
#include <cmath>

#include "core/counts.h"
#include "core/tolerances.h"

namespace orvak::beams {

namespace {

double clearSpacingCm(double diameterMm, const BarSelectionSettings& settings) {
    return std::max(settings.minClearSpacingCm, diameterMm / 10.0);
}

// More bars than any web holds in one layer: a count beyond it comes from a bad input.
constexpr int kMaxBarsPerLayer = 1000;

// The width between the stirrups' inner faces, where the bars of a layer stand.
double insideWidthCm(double widthCm, const BarSelectionSettings& settings) {
    return widthCm - 2.0 * settings.sideCoverCm - 2.0 * settings.stirrupDiameterMm / 10.0;
}

// 280 MPa, the service stress of the crack-control rule's constants, in kg/cm².
constexpr double kCrackRuleStressKgCm2 = 280.0 * 10.19716;

} // namespace

double crackControlMaxSpacingCm(double fyKgCm2, double clearCoverCm) {
    const double fs = 2.0 / 3.0 * fyKgCm2;
    const double ratio = kCrackRuleStressKgCm2 / fs;
    return std::max(std::min(38.0 * ratio - 2.5 * clearCoverCm, 30.0 * ratio), 0.0);
}

int barsPerLayer(double widthCm, double diameterMm, const BarSelectionSettings& settings) {
    const double db = diameterMm / 10.0;
    const double inside = insideWidthCm(widthCm, settings);
    if (!(db > 0.0) || inside < db) {
        return 0;
    }
    const double s = clearSpacingCm(diameterMm, settings);
    // n bars and n - 1 gaps: n db + (n - 1) s <= inside. A hair of tolerance keeps an exact
    // fit from being lost to rounding.
    return core::checkedCount(std::floor((inside + s) / (db + s) + core::kAbsoluteEqual),
                              kMaxBarsPerLayer)
        .value_or(0);
}

BarChoice selectBars(double areaCm2, double widthCm, std::span<const bars::BarProperties> table,
                     const BarSelectionSettings& settings) {
    BarChoice best;
    const int minBars = std::max(settings.minBars, 1);
    const int maxLayers = std::max(settings.maxLayers, 1);
    const double need = std::isfinite(areaCm2) ? std::max(areaCm2, 0.0) : 0.0;
    for (const bars::BarProperties& bar : table) {
        const double dia = bar.diameterMm;
        if (!(dia > 0.0) || !(bar.areaCm2 > 0.0) || dia < settings.minDiameterMm ||
            (settings.maxDiameterMm > 0.0 && dia > settings.maxDiameterMm)) {
            continue;
        }
        if (!settings.allowedDiametersMm.empty() &&
            std::find(settings.allowedDiametersMm.begin(), settings.allowedDiametersMm.end(),
                      dia) == settings.allowedDiametersMm.end()) {
            continue;
        }
        const int perLayer = barsPerLayer(widthCm, dia, settings);
        if (perLayer < 2) {
            continue;
        }
        const double db = dia / 10.0;
        // A tolerance of a millionth of a bar keeps 4 × 2.01 for 8.04 at four bars. A count
        // beyond what the layers can hold (a bar of an absurdly small area) rules the diameter
        // out rather than wrapping into a small count.
        const std::optional<int> byArea = core::checkedCount(
            std::ceil(need / bar.areaCm2 - core::kSingleRounding), perLayer * maxLayers);
        if (!byArea) {
            continue;
        }
        int count = std::max(minBars, *byArea);
        // Crack control: n bars of one layer stand (inside - db) / (n - 1) apart, centre to
        // centre. A full layer meets the rule as well as any arrangement can.
        bool crackGoverns = false;
        bool crackMet = true;
        double crackLimit = 0.0;
        const double inside = insideWidthCm(widthCm, settings);
        if (need > 0.0 && settings.crackControlFyKgCm2 > 0.0) {
            crackLimit = crackControlMaxSpacingCm(
                settings.crackControlFyKgCm2, std::max(settings.tensionCoverCm - db / 2.0, 0.0));
            const double gaps = (inside - db) / std::max(crackLimit, core::kAbsoluteEqual);
            const int spread = gaps < perLayer
                                   ? static_cast<int>(std::ceil(gaps - core::kAbsoluteEqual)) + 1
                                   : perLayer;
            if (std::min(spread, perLayer) > count) {
                count = std::min(spread, perLayer);
                crackGoverns = true;
            }
            // A full layer is as close as the bars can stand; where even it is too sparse the
            // rule cannot be met with this web and cover.
            if (gaps > perLayer - 1 + core::kAbsoluteEqual &&
                (inside - db) / (perLayer - 1) > crackLimit + core::kAbsoluteEqual) {
                crackMet = false;
            }
        }
        const int layers = (count + perLayer - 1) / perLayer;
        if (layers > maxLayers) {
            continue;
        }
        const double provided = count * static_cast<double>(bar.areaCm2);
        // A choice that keeps the crack-control spacing beats one that cannot; then the
        // fewest layers, the least steel, the larger bar.
        const bool better = !best.found || (crackMet && !best.crackControlMet) ||
                            (crackMet == best.crackControlMet &&
                             (layers < best.layers ||
                              (layers == best.layers &&
                               (provided < best.areaCm2 - core::kAbsoluteEqual ||
                                (std::abs(provided - best.areaCm2) <= core::kAbsoluteEqual &&
                                 dia > best.diameterMm)))));
        if (better) {
            best.found = true;
            best.crackControlGoverns = crackGoverns;
            best.crackControlMet = crackMet;
            best.crackSpacingLimitCm = crackLimit;
            best.count = count;
            best.diameterMm = dia;
            best.layers = layers;
            best.barsPerLayer = perLayer;
            best.areaCm2 = provided;
            const int inFullLayer = std::min(count, perLayer);
            best.clearSpacingCm =
                inFullLayer > 1 ? (inside - inFullLayer * db) / (inFullLayer - 1) : 0.0;
        }
    }
    return best;
}

double layerCentroidOffsetCm(const BarChoice& choice, const BarSelectionSettings& settings) {
    if (!choice.found || choice.layers <= 1 || choice.count <= 0 || choice.barsPerLayer <= 0) {
        return 0.0;
    }
    const double pitch = choice.diameterMm / 10.0 + clearSpacingCm(choice.diameterMm, settings);
    double moment = 0.0;
    int left = choice.count;
    for (int layer = 0; left > 0; ++layer) {
        const int bars = std::min(left, choice.barsPerLayer);
        moment += bars * layer * pitch;
        left -= bars;
    }
    return moment / choice.count;
}

} // namespace orvak::beams
