#pragma once

#include <QDir>
#include <QFile>
#include <QString>

#include <gtest/gtest.h>

namespace plotwell::test {

// Zones shaped like those of real map packs, written for these tests and kept
// in tests/data/zones:
// - trakanon.txt (CR LF) with Trakanon_1.txt and TRAKANON_2.TXT beside it;
// - firiona.txt (LF, a blank line) with Firiona_1.txt;
// - oasis.txt, 313 lines, whose line 150 is a label with a field missing;
// - picture.txt, a PNG picture under a map's name.
// Copies them into folder, so that a test may write over them; returns the
// path of the copy of name, in native form.
inline QString copyRealZones(const QString& folder, const char* name)
{
    const QDir from(QStringLiteral(PLOTWELL_TEST_ZONES));
    for (const QString& file : from.entryList(QDir::Files)) {
        const QString to = QDir(folder).filePath(file);
        if (!QFile::exists(to)) {
            EXPECT_TRUE(QFile::copy(from.filePath(file), to)) << file.toStdString();
        }
        QFile::setPermissions(to, QFile::ReadOwner | QFile::WriteOwner);
    }
    return QDir::toNativeSeparators(QDir(folder).filePath(QLatin1String(name)));
}

} // namespace plotwell::test
