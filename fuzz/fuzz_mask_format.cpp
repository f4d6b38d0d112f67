// libFuzzer target of the PRINT USING formatter: any mask with any mix of numbers and texts
// must format without a crash, and a field that fits must keep the width of its mask.
#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "core/mask_format.h"

using orvak::core::formatUsing;
using orvak::core::UsingValue;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider in(data, size);
    const std::string mask = in.ConsumeRandomLengthString(64);
    const std::size_t count = in.ConsumeIntegralInRange<std::size_t>(0, 6);
    std::vector<std::string> texts;
    texts.reserve(count);
    std::vector<UsingValue> values;
    for (std::size_t i = 0; i < count && in.remaining_bytes() > 0; ++i) {
        if (in.ConsumeBool()) {
            values.emplace_back(in.ConsumeFloatingPoint<double>());
        } else {
            texts.push_back(in.ConsumeRandomLengthString(32));
            values.emplace_back(std::string_view(texts.back()));
        }
    }
    // The overloads take an initializer list; feed the values one by one and in pairs.
    std::size_t total = 0;
    for (const auto& v : values) {
        total += std::visit([&](auto x) { return formatUsing(mask, x).size(); }, v);
    }
    if (values.size() >= 2) {
        total += formatUsing(mask, {values[0], values[1]}).size();
    }
    total += formatUsing(mask, {}).size();

    // Plain digit fields of a mask without any other special character never change width
    // for a number that fits: "####.##" with 0 is seven characters.
    if (!mask.empty() && mask.find_first_not_of("#.") == std::string::npos &&
        mask.find('#') != std::string::npos && mask.find('.') == mask.rfind('.')) {
        if (formatUsing(mask, 0.0).size() != mask.size()) {
            std::abort();
        }
    }
    return total == static_cast<std::size_t>(-1) ? 1 : 0;
}
