// The software configuration SWC and the last-project state PRJNO: read item by item, each
// read guarded by the end of the file, and written back in the same order.
#include "shell/software_config.h"

#include <algorithm>

#include "core/file_util.h"
#include "core/text_reader.h"

namespace orvak::shell {

namespace {

using core::SequentialReader;
using core::SequentialWriter;

std::string trimmedUpper(std::string_view text) {
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) {
        return {};
    }
    const auto last = text.find_last_not_of(" \t");
    std::string out(text.substr(first, last - first + 1));
    for (char& c : out) {
        if (c >= 'a' && c <= 'z') {
            c = static_cast<char>(c - 'a' + 'A');
        }
    }
    return out;
}

// An integer item: the number read, or the item's current value when the field holds none.
void readInteger(SequentialReader& in, std::int16_t& item) {
    if (in.eof()) {
        return;
    }
    if (const auto v = in.inputInteger()) {
        item = *v;
    }
}

void readString(SequentialReader& in, std::string& item) {
    if (!in.eof()) {
        item = in.inputString();
    }
}

void readLine(SequentialReader& in, std::string& item) {
    if (!in.eof()) {
        item = in.lineInput();
    }
}

} // namespace

bool SoftwareConfig::rightToLeft() const {
    return trimmedUpper(language) != "ENGLISH";
}

SoftwareConfig parseSoftwareConfig(std::string content) {
    SoftwareConfig config;
    SequentialReader in(std::move(content));
    readLine(in, config.text1);
    readLine(in, config.text2);
    readLine(in, config.text3);
    std::string language = config.language;
    readLine(in, language);
    // A blank language line names no language at all; the program's own language stands.
    if (!trimmedUpper(language).empty()) {
        config.language = language;
    }
    readInteger(in, config.settingA);
    readInteger(in, config.settingB);
    readInteger(in, config.settingC);
    config.settingC = std::clamp<std::int16_t>(config.settingC, 1, 2);
    readString(in, config.text4);
    return config;
}

std::string formatSoftwareConfig(const SoftwareConfig& config) {
    SequentialWriter out;
    out.printLine(config.text1).printLine(config.text2).printLine(config.text3);
    out.printLine(config.language);
    out.writeLine({SequentialWriter::integer(config.settingA)});
    out.writeLine({SequentialWriter::integer(config.settingB)});
    out.writeLine({SequentialWriter::integer(config.settingC)});
    out.writeLine({SequentialWriter::str(config.text4)});
    return out.text();
}

SoftwareConfig readSoftwareConfig(const std::filesystem::path& swcPath) {
    auto bytes = core::readWholeFile(swcPath);
    if (!bytes) {
        return {};
    }
    return parseSoftwareConfig(std::string(bytes->begin(), bytes->end()));
}

void writeSoftwareConfig(const std::filesystem::path& swcPath, const SoftwareConfig& config) {
    core::saveFileAtomically(swcPath, formatSoftwareConfig(config));
}

LastProjectState parseLastProjectState(std::string content) {
    LastProjectState state;
    SequentialReader in(std::move(content));
    readString(in, state.projectsFolder);
    readString(in, state.projectPath);
    readInteger(in, state.projectSetting1);
    readInteger(in, state.projectSetting2);
    readInteger(in, state.projectSetting3);
    readString(in, state.projectText1);
    readString(in, state.projectText2);
    readString(in, state.userName);
    readInteger(in, state.userSetting1);
    readInteger(in, state.userSetting2);
    readInteger(in, state.projectSetting4);
    if (!in.eof()) {
        if (const auto v = in.inputSingle()) {
            state.projectValue = *v;
        }
    }
    readInteger(in, state.projectSetting5);
    return state;
}

std::string formatLastProjectState(const LastProjectState& s) {
    using W = SequentialWriter;
    W out;
    out.writeLine({W::str(s.projectsFolder), W::str(s.projectPath)});
    out.writeLine({W::integer(s.projectSetting1), W::integer(s.projectSetting2),
                   W::integer(s.projectSetting3), W::str(s.projectText1), W::str(s.projectText2)});
    out.writeLine({W::str(s.userName), W::integer(s.userSetting1), W::integer(s.userSetting2)});
    out.writeLine(
        {W::integer(s.projectSetting4), W::single(s.projectValue), W::integer(s.projectSetting5)});
    return out.text();
}

LastProjectState readLastProjectState(const std::filesystem::path& prjnoPath) {
    auto bytes = core::readWholeFile(prjnoPath);
    if (!bytes) {
        return {};
    }
    return parseLastProjectState(std::string(bytes->begin(), bytes->end()));
}

void writeLastProjectState(const std::filesystem::path& prjnoPath, const LastProjectState& state) {
    core::saveFileAtomically(prjnoPath, formatLastProjectState(state));
}

} // namespace orvak::shell
