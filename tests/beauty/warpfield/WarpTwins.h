// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <cstring>

#include "CWarpField.h"
#include "PlainWarp.h"

// The field under test and its plain twin, told the same.
struct WarpTwins {
    CWarpField field;
    Plain::WarpField plain;

    WarpTwins(const Bitmap& picture, int radius, double amount) : plain(picture) {
        EXPECT_TRUE(field.SetImage(&picture, nullptr));
        SetBrush(radius, amount);
    }

    void SetBrush(int radius, double amount) {
        field.SetRadius(radius);
        field.SetAmount(amount);
        plain.SetRadius(radius);
        plain.amount = amount;
    }

    bool Deform(int x1, int y1, int x0, int y0, int mode) {
        const bool done = field.Deform(x1, y1, x0, y0, mode);
        EXPECT_EQ(plain.Deform(x1, y1, x0, y0, mode), done);
        return done;
    }

    // Bit for bit and byte for byte.
    testing::AssertionResult Agree() const {
        for (int y = 0; y < field.Height(); ++y)
            for (int x = 0; x < field.Width(); ++x)
                if (std::memcmp(field.FieldAt(x, y), &plain.At(x, y), 2 * sizeof(float)) != 0)
                    return testing::AssertionFailure()
                           << "field at " << x << ", " << y << ": " << field.FieldAt(x, y)[0] << ", "
                           << field.FieldAt(x, y)[1] << " and not " << plain.At(x, y).x << ", " << plain.At(x, y).y;
        for (int y = 0; y < field.Height(); ++y)
            for (int x = 0; x < 4 * field.Width(); ++x)
                if (field.Output().Row(y)[x] != plain.output.Row(y)[x])
                    return testing::AssertionFailure()
                           << "byte " << x % 4 << " of pixel " << x / 4 << ", " << y << ": "
                           << int(field.Output().Row(y)[x]) << " and not " << int(plain.output.Row(y)[x]);
        return testing::AssertionSuccess();
    }
};
