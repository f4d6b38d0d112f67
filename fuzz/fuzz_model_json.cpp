// libFuzzer target: the JSON project model of any bytes. A text that is not JSON, or a model
// the checks refuse (InputError), changes nothing. A model that is accepted survives an
// export and an import unchanged: its JSON reads back to the same model, that model written
// into a project folder reads back from the files as it was, and its JSON is the same text.
#include <cstddef>
#include <cstdint>

#include <nlohmann/json.hpp>

#include "core/error.h"
#include "fuzz_support.h"
#include "model/model_json.h"
#include "model/project_model.h"

using namespace orvak;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::ScratchFolder scratch("model");
    const nlohmann::json j = nlohmann::json::parse(data, data + size, nullptr, false);
    if (j.is_discarded()) {
        return 0;
    }
    model::ProjectModel m;
    try {
        m = model::modelFromJson(j);
    } catch (const InputError&) {
        return 0;
    }
    const nlohmann::json exported = model::modelToJson(m);
    model::ProjectModel imported;
    try {
        imported = model::modelFromJson(exported);
    } catch (const InputError& e) {
        fuzz::fail(std::string("an exported model is refused on import: ") + e.what());
    }
    if (!(imported.floors == m.floors)) {
        fuzz::fail("an exported model imports as a different model");
    }
    if (model::modelToJson(imported).dump() != exported.dump()) {
        fuzz::fail("a model exported twice gives two different texts");
    }

    scratch.clear();
    try {
        model::writeProjectModel(scratch.path(), m);
    } catch (const InputError& e) {
        fuzz::fail(std::string("an accepted model cannot be written: ") + e.what());
    }
    if (!(model::readProjectModel(scratch.path()).floors == m.floors)) {
        fuzz::fail("a model written into a project reads back as a different model");
    }
    return 0;
}
