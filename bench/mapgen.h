#pragma once

#include <QString>

#include <cstddef>
#include <string>

namespace plotwell::bench {

// Map text shaped like the game's zone files: chains of short line segments
// with four decimals, blanks after the commas, two blanks before colours and
// label text, LF line ends. The same sizes always give the same text.
std::string generateMapText(std::size_t lines, std::size_t labels);
// The same text written to a file in pieces, so that a large map never has
// to be held in memory; returns the file's size in bytes.
std::size_t writeMapFile(const QString& path, std::size_t lines, std::size_t labels);

// Resident memory of this process now and at its peak, in bytes (0 where the
// platform does not tell), and a reset of the peak to the present.
std::size_t residentBytes();
std::size_t peakResidentBytes();
void resetPeakResident();

} // namespace plotwell::bench
