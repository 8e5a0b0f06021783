#pragma once

#include "document/mapdocument.h"

#include <QString>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

class QIODevice;

namespace plotwell {

// The longest record line the reader takes, without its line end. Real
// records are a few dozen bytes; a record line longer than this stops the
// read, so that a damaged file cannot make the reader hold a giant line in
// memory. Lines that are not records are skipped whatever their length.
constexpr std::size_t kMaxRecordLine = std::size_t(1) << 20;

// How a read of map text ended.
struct ReadResult {
    bool opened = false;
    QString openError; // why the file could not be opened
    std::size_t linesAdded = 0; // L records appended
    std::size_t labelsAdded = 0; // P records appended
    // The text line (from 1) where the read stopped: a record that could not
    // be converted, a record line longer than kMaxRecordLine, or the line
    // being read when the device failed. 0 when it read to the end.
    std::size_t stoppedAtLine = 0;
    std::string reason;
    // The progress hook asked to stop before the end.
    bool cancelled = false;
    // A line up to where the read ended held a NUL byte: text files never
    // hold one, so this is most likely not a map text file at all (a binary
    // file, or text saved as UTF-16).
    bool holdsNul = false;

    // Opened and read to the end, neither stopped nor cancelled.
    bool complete() const { return opened && stoppedAtLine == 0 && !cancelled; }
};

// Called during a read, after each piece, with the bytes read so far and the
// size of the whole (-1 when the device cannot tell); returning false cancels
// the read.
using ReadProgress = std::function<bool(qint64 done, qint64 total)>;

// Reads map text and appends its records to doc on the given layer, scaled by
// scale. A line ends at CR LF, a lone CR or a lone LF. Lines starting with
// "L " or "P " are records; every other line is skipped. The read stops at the
// first record that cannot be converted and keeps what came before it.
//
// Records are only ever appended: after a stop or a cancel, the records read
// so far are the last linesAdded lines and the last labelsAdded labels of
// doc. A caller that wants the layer as it was before the read drops that
// many from the end of each array. Memory stays bounded whatever the input:
// the reader holds at most one record line and one piece of the device.
ReadResult readMapRecords(QIODevice& device, MapDocument& doc, std::int16_t layer, float scale,
                          const ReadProgress& progress = {});
// As readMapRecords on the file at path. Only regular files are read: a
// folder, a pipe or a device is refused with a reason in openError (a pipe
// could block the read for ever, a device never end).
ReadResult readMapFile(const QString& path, MapDocument& doc, std::int16_t layer, float scale,
                       const ReadProgress& progress = {});

// How many text lines the file at path holds, with the line ends the reader
// knows (a last line without one counts too); none when it cannot be read.
// Only regular files are counted.
std::optional<std::size_t> countTextLines(const QString& path);

} // namespace plotwell
