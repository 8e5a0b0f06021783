#pragma once

#include <QString>

namespace plotwell {

// Whether two paths name one file on disk, also when one of them reaches it
// through a symbolic or a hard link. False when either does not exist.
bool sameFileOnDisk(const QString& a, const QString& b);

} // namespace plotwell
