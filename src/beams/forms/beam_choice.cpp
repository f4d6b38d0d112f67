// The floor and beam choice of the beam forms.
#include "beams/forms/beam_choice.h"

#include <QComboBox>
#include <QWidget>

#include "core/error.h"
#include "floors/floors.h"
#include "floors/forms/floor_forms.h"
#include "ui/qt_text.h"

namespace orvak::beams::forms {

namespace {

QString beamText(const BeamRecord& b, std::string_view language) {
    return QStringLiteral("%1  %2").arg(b.number).arg(ui::toQString(b.name, language));
}

} // namespace

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

void BeamChoice::loadBeams(bool notify) {
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
        m_beams->addItem(beamText(b, m_shell.language()));
    }
    m_beams->blockSignals(false);
    if (notify) {
        emit beamChanged();
    }
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

void BeamChoice::replaceBeam(const BeamRecord& record) {
    const int at = m_beams->currentIndex();
    if (at >= 0 && static_cast<std::size_t>(at) < m_records.size()) {
        m_records[static_cast<std::size_t>(at)] = record;
        m_beams->setItemText(at, beamText(record, m_shell.language()));
    }
}

bool BeamChoice::chooseBeam(int floor, int number) {
    const int f = m_floors->findData(floor);
    if (f < 0) {
        return false;
    }
    m_floors->blockSignals(true);
    m_floors->setCurrentIndex(f);
    m_floors->blockSignals(false);
    reloadBeams(number);
    const BeamRecord* chosen = beam();
    return chosen != nullptr && chosen->number == number;
}

void BeamChoice::reloadBeams(int number) {
    loadBeams(false);
    m_beams->blockSignals(true);
    for (std::size_t i = 0; i < m_records.size(); ++i) {
        if (m_records[i].number == number) {
            m_beams->setCurrentIndex(static_cast<int>(i));
        }
    }
    m_beams->blockSignals(false);
    emit beamChanged();
}

} // namespace orvak::beams::forms
