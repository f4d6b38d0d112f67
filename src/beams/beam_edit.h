// Editing the beams of a floor one at a time: a beam stored in place at its record number (the
// others untouched, so that no beam changes its number and no steel item its owner), new and
// deleted beams, and spans added or taken out of a beam.
#pragma once

#include <filesystem>
#include <optional>
#include <vector>

#include "beams/beam_record.h"

namespace orvak::beams {

/// Writes `record` into its floor's beam file at record `record.number` (1..999), the other
/// records as they are, and returns the record as read back from the file. Throws
/// InputError with the sentence of validateBeam when the beam cannot be stored (nothing is
/// written then), FileError when the file cannot be read or written.
BeamRecord storeBeam(const std::filesystem::path& projectFolder, int floor,
                     const BeamRecord& record);

/// Beam `number` of floor `floor` as stored; nothing when the floor has no such beam. Throws
/// FileError when the beam file cannot be read.
std::optional<BeamRecord> readStoredBeam(const std::filesystem::path& projectFolder, int floor,
                                         int number);

/// Takes beam `number` out of its floor's file: its record loses its use mark, and records
/// not in use at the end of the file are cut off. The numbers of the other beams stay.
void removeBeam(const std::filesystem::path& projectFolder, int floor, int number);

/// The number a new beam of the floor takes: the first record not in use, else one past the
/// last; 0 when every number up to kMaxBeamsPerFloor is taken.
int freeBeamNumber(const std::filesystem::path& projectFolder, int floor);

/// A beam of one 5 m span of 25 × 50 cm, supported at both ends, without loads, with the
/// settings `defaults`. Materials and covers are those of `like` when given (the beams of a
/// floor are usually cast of one concrete), else Fc 250, FY 4200 and 2400 kg/cm², covers
/// 4, 4 and 2.5 cm.
BeamRecord newBeam(int floor, int number, const BeamSettings& defaults,
                   const BeamRecord* like = nullptr);

/// Adds a span after span `after` (0-based), a copy of it with its loads and of its right
/// support. False, with nothing changed, when the beam already has kMaxSpans spans or
/// `after` is not one of its spans.
bool insertSpan(BeamRecord& beam, int after);

/// Takes out span `span` (0-based) and the support on its right (for the last span, the one
/// on its left), so that the spans beside it join at one support. False, with nothing
/// changed, for a beam of one span or a span it does not have.
bool removeSpan(BeamRecord& beam, int span);

} // namespace orvak::beams
