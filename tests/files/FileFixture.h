#pragma once

#include "files/FileError.h"
#include "support/Files.h"
#include "support/QtPrinting.h"

#include <QTemporaryDir>

#include <functional>

namespace palvera {

/// A folder of its own, and in it a place for the file that a test is about.
struct FileFixture : testing::Test {
    QTemporaryDir root;
    QString path = root.filePath("master.mov");

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
