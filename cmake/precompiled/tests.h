// What the tests read besides; compiled once.
#pragma once

#include "cmake/precompiled/plain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
