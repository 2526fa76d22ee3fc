// What the tests of windows read besides; compiled once.
#pragma once

#include "cmake/precompiled/windows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <QSignalSpy>
#include <QTest>
