// What nearly every test includes beside the product's own, and what is slow to parse.
#pragma once

#include "src/pch.h"

#include <gmock/gmock.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
