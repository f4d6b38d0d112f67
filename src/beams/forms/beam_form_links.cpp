// The beam forms' shared reading, storing and in-memory design of one stored beam.
#include "beams/forms/beam_form_links.h"

#include <QStyledItemDelegate>

#include "beams/beam_job.h"
#include "beams/load_cases.h"
#include "core/error.h"
#include "jobs/beam_design_job.h"

namespace orvak::beams::forms {

namespace {

class NumberDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        if (index.data(Qt::TextAlignmentRole).toInt() == kNumberAlignment.toInt()) {
            option->direction = Qt::LeftToRight;
        }
    }
};

} // namespace

QString asSentence(const std::string& clause) {
    QString s = QString::fromStdString(clause);
    if (!s.isEmpty()) {
        s[0] = s[0].toUpper();
        if (!s.endsWith(QLatin1Char('.'))) {
            s += QLatin1Char('.');
        }
    }
    return s;
}

void numberCells(QTableWidget* table) {
    table->setItemDelegate(new NumberDelegate(table));
}

void markChanged(QWidget* form, const ui::MessageHook& hook, const std::filesystem::path& project,
                 int floor, int beamNumber) {
    try {
        jobs::markBeamChanged(project, floor, beamNumber);
    } catch (const FileError& e) {
        // The next design records the state anew.
        ui::tellUser(form, hook, QString::fromUtf8(e.what()));
    }
}

int storedScheme(const BeamRecord& record) {
    return record.caseScheme >= kMinCaseScheme && record.caseScheme <= kMaxCaseScheme
               ? record.caseScheme
               : kDefaultCaseScheme;
}

StoredDesign designInMemory(const BeamRecord& record, int scheme,
                            const std::filesystem::path& generalFolder) {
    StoredDesign out;
    for (const StoredSpan& s : record.spans) {
        out.spanLengthsCm.push_back(s.lengthM * 100.0);
    }
    if (std::string problem = validateBeam(record); !problem.empty()) {
        out.analysis.status = AnalysisStatus::InvalidInput;
        out.analysis.message = problem;
        out.design.failures.push_back(std::move(problem));
        return out;
    }
    BeamAnalysisInput model = analysisInput(record, scheme);
    out.analysis = analyzeBeam(model);
    out.design = designBeam(designInputFromRecord(record, std::move(model), out.analysis,
                                                  designBarTable(generalFolder).rows));
    return out;
}

} // namespace orvak::beams::forms
