// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>
