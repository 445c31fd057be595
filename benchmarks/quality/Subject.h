// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core.hpp>

#include <optional>
#include <string>
#include <vector>

#include "Bitmap.h"
#include "PortraitLook.h"

// A picture with one face and what is known about it. Masks have the picture's size: 255 inside, 0 outside, and are all
// black where the picture does not show the part or nobody said where it is.
struct Subject {
    std::string name;
    Bitmap picture;
    double faceWidth = 0;  // in pixels; lengths of measures are parts of it
    cv::Mat1b face;        // the head without hair, as far as it is known
    cv::Mat1b eyes;        // openings of the lids
    cv::Mat1b irises;      // without pupils and what the lids cover
    cv::Mat1b lips;
    cv::Mat1b teeth;
    cv::Mat1b skin;  // the face without eyes, mouth and strong gradients
    cv::Mat1b hair;

    // Flaws, and the same picture without them; none where they are not known.
    struct Disc {
        cv::Point2d centre;
        double radius;
    };
    std::vector<Disc> spots;
    std::vector<Disc> redPupils;
    std::vector<cv::Mat1b> circles;  // dark circles, one for each eye
    Bitmap flawless;
    bool isSample = false;  // the portrait in the skin in which it is shipped

    // A part of the picture in face widths about a point of the face's box (0 to 1 both ways), for crops.
    cv::Rect Around(double x, double y, double width, double height) const;
};

// A picture file with its regions. `regions` is a file in the form of the sample's truth (art/portrait/Truth.cpp), of
// which every member but "face" may be missing; without it the face is looked for as the largest patch of skin colour.
// None when the picture can't be read or no face is found.
std::optional<Subject> ReadSubject(const std::string& picture, const std::string& regions);

// The generated portrait with its own truth.
Subject PaintedSubject(int width, const PortraitLook& look, const std::string& name);
