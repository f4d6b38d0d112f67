// The floor and beam choice of the beam forms.
#include "beams/forms/beam_choice.h"

#include <QComboBox>
#include <QWidget>

#include "core/error.h"
#include "floors/floors.h"
#include "floors/forms/floor_forms.h"
#include "ui/qt_text.h"

namespace orvak::beams::forms {

BeamChoice::BeamChoice(const shell::ShellState& shell, QWidget* form, ui::MessageHook* tell)
    : QObject(form), m_shell(shell), m_form(form), m_tell(tell), m_floors(new QComboBox(form)),
      m_beams(new QComboBox(form)) {
    m_floors->setObjectName(QStringLiteral("CielCombo"));
    m_beams->setObjectName(QStringLiteral("BeamCombo"));
    connect(m_floors, &QComboBox::currentIndexChanged, this, [this] { loadBeams(); });
    connect(m_beams, &QComboBox::currentIndexChanged, this, [this] { emit beamChanged(); });
}

void BeamChoice::load() {
    m_floors->blockSignals(true);
    m_floors->clear();
    try {
        for (const floors::Floor& f : floors::readFloors(m_shell.projectPath())) {
            m_floors->addItem(floors::forms::floorCaption(f, m_shell.language()),
                              static_cast<int>(f.number));
            if (f.number == m_shell.currentFloor) {
                m_floors->setCurrentIndex(m_floors->count() - 1);
            }
        }
    } catch (const FileError& e) {
        ui::tellUser(m_form, *m_tell, QString::fromUtf8(e.what()));
    }
    m_floors->blockSignals(false);
    loadBeams();
}

void BeamChoice::loadBeams() {
    m_beams->blockSignals(true);
    m_beams->clear();
    m_records.clear();
    if (m_floors->currentIndex() >= 0) {
        try {
            m_records = readBeamFile(m_shell.projectPath(), floor());
        } catch (const FileError& e) {
            ui::tellUser(m_form, *m_tell, QString::fromUtf8(e.what()));
        }
    }
    for (const BeamRecord& b : m_records) {
        m_beams->addItem(
            QStringLiteral("%1  %2").arg(b.number).arg(ui::toQString(b.name, m_shell.language())));
    }
    m_beams->blockSignals(false);
    emit beamChanged();
}

int BeamChoice::floor() const {
    return m_floors->currentIndex() < 0 ? 0 : m_floors->currentData().toInt();
}

const BeamRecord* BeamChoice::beam() const {
    const int at = m_beams->currentIndex();
    return at < 0 || static_cast<std::size_t>(at) >= m_records.size()
               ? nullptr
               : &m_records[static_cast<std::size_t>(at)];
}

bool BeamChoice::choose(int floor, int beamNumber) {
    const int floorAt = m_floors->findData(floor);
    if (floorAt < 0) {
        return false;
    }
    m_floors->setCurrentIndex(floorAt);
    for (std::size_t k = 0; k < m_records.size(); ++k) {
        if (m_records[k].number == beamNumber) {
            m_beams->setCurrentIndex(static_cast<int>(k));
            return true;
        }
    }
    return false;
}

void BeamChoice::replaceBeam(const BeamRecord& record) {
    const int at = m_beams->currentIndex();
    if (at >= 0 && static_cast<std::size_t>(at) < m_records.size()) {
        m_records[static_cast<std::size_t>(at)] = record;
    }
}

} // namespace orvak::beams::forms
