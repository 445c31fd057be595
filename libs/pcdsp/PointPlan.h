// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <vector>

#include "Kernels.h"
#include "PcDspTypes.h"
#include "PointCurves.h"

// Point operations turned into kernel stages; neutral ones vanish.
class PointPlan {
  public:
    // `count` operations, in order. False when one holds a number that is none; the plan is then empty.
    bool Add(const PointOp* ops, int count);

    bool IsNeutral() const { return m_stages.empty(); }
    const std::vector<PointStage>& Stages() const { return m_stages; }

  private:
    void AddOp(const PointOp& op);
    void AddTone(double (*curve)(double, double), double amount);
    void AddSaturation(double percent, bool protectSkin);
    void AddHue(double degrees);
    void AddBalance(double red, double green, double blue);

    std::vector<PointStage> m_stages;
    std::vector<std::unique_ptr<PointCurve>> m_curves;  // what the stages point to
};
