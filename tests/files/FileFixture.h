#pragma once

#include "files/FileError.h"
#include "support/QtPrinting.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <functional>

namespace palvera {

/// A folder of its own, and in it a place for the file that a test is about.
struct FileFixture : testing::Test {
    QTemporaryDir root;
    QString path = root.filePath("master.mov");

    static void append(const QString& file, const QByteArray& bytes)
    {
        QFile opened(file);
        ASSERT_TRUE(opened.open(QIODevice::Append));
        ASSERT_EQ(opened.write(bytes), bytes.size());
    }
    static QByteArray contentOf(const QString& file)
    {
        QFile opened(file);
        return opened.open(QIODevice::ReadOnly) ? opened.readAll() : QByteArray("cannot be opened");
    }
    /// What the user reads when `operation` fails; empty when it does not.
    static std::string failureOf(const std::function<void()>& operation)
    {
        try {
            operation();
            return "";
        } catch (const FileError& error) {
            return error.text().toStdString();
        }
    }
};

} // namespace palvera
