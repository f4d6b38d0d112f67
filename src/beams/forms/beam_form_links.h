// What the forms of one beam share: reading and storing the beam by floor and number, its
// design in memory as the listings have it, and finding a form already open on the beam.
#pragma once

#include <QApplication>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTableWidget>
#include <QWidget>
#include <filesystem>
#include <optional>

#include "beams/beam_design.h"
#include "beams/beam_edit.h"
#include "beams/beam_record.h"
#include "ui/form_support.h"

namespace orvak::beams::forms {



/// After an edit of a stored beam: its design state says the last design no longer stands.
/// A steel store that cannot take the state (busy with a run, say) is told to the user; the
/// edit itself stays stored.
void markChanged(QWidget* form, const ui::MessageHook& hook, const std::filesystem::path& project,
                 int floor, int beamNumber);
/// The scheme the beam was last analysed under, else the full live-load pattern.
int storedScheme(const BeamRecord& record);

/// The beam's design as its listings have it, nothing written: its analysis under `scheme`
/// and the design from the record and the bar table of `generalFolder`. Throws InputError
/// when the bar table cannot serve; an analysis that fails leaves its message in failures.
struct StoredDesign {
    BeamAnalysisResult analysis;
    BeamDesignResult design;
    std::vector<double> spanLengthsCm;
};
StoredDesign designInMemory(const BeamRecord& record, int scheme,
                            const std::filesystem::path& generalFolder);

/// A clause of the record's checks ("span 2: the length must be ...") as a sentence shown
/// alone: a capital first letter and a full stop.
QString asSentence(const std::string& clause);

/// The alignment of a table's numbers and bar marks: right in either direction.
inline constexpr Qt::Alignment kNumberAlignment =
    Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter;

/// Makes the cells of `table` aligned with kNumberAlignment read left to right in a
/// right-to-left form too, so that "-6.69" and "Ø8 @ 20" keep their order; the table itself
/// mirrors with the form.
void numberCells(QTableWidget* table);

/// A form of type `Form` open on the beam (its floor() and beamNumber() equal), brought to
/// the front; nullptr when there is none.
template <class Form> Form* raiseOpenForm(int floor, int beamNumber) {
    for (QWidget* w : QApplication::allWidgets()) {
        auto* form = qobject_cast<Form*>(w);
        // A form closed but not yet deleted is no longer the engineer's.
        if (form == nullptr || form->floor() != floor || form->beamNumber() != beamNumber ||
            (form->testAttribute(Qt::WA_DeleteOnClose) && !form->isVisible())) {
            continue;
        }
        if (auto* sub = qobject_cast<QMdiSubWindow*>(form->parentWidget())) {
            if (QMdiArea* area = sub->mdiArea()) {
                area->setActiveSubWindow(sub);
            }
        } else {
            form->raise();
            form->activateWindow();
        }
        return form;
    }
    return nullptr;
}

} // namespace orvak::beams::forms
