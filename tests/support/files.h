#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

#include <gtest/gtest.h>

namespace plotwell::test {

// A file's bytes, or "(missing)" when it cannot be read.
inline QByteArray fileBytes(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(missing)");
}

// Replaces a file with the bytes; returns its path.
inline QString writeBytes(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate)) << path.toStdString();
    file.write(bytes);
    return file.fileName();
}

// Appends the bytes to a file, as a program writing a log does.
inline void appendBytes(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Append)) << path.toStdString();
    file.write(bytes);
}

// What this system says when a file cannot be opened for reading or for
// writing, such as one in a folder that does not exist: the words differ
// from one system to another.
inline QString openErrorOf(const QString& path, QIODevice::OpenMode mode = QIODevice::ReadOnly)
{
    QFile file(path);
    EXPECT_FALSE(file.open(mode)) << path.toStdString();
    return file.errorString();
}

} // namespace plotwell::test
