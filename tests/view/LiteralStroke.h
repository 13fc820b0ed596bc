// A stroke of the tool Draw, written down step by step: what the window and the document are held
// against.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <vector>

namespace quoril::test {

struct LiteralPoint {
    std::int64_t Pos = 0;
    std::int64_t Val = 0;
};

class LiteralStroke {
  public:
    void Down(std::int64_t Pos, std::int64_t Val) {
        LastPos = Pos;
        LastVal = Val;
        Points = {{Pos, Val}};
    }
    void Move(std::int64_t P, std::int64_t V, std::int64_t Rate) {
        const std::int64_t Dp = P - LastPos;
        const std::int64_t Dv = V - LastVal;
        if (static_cast<std::int64_t>(Points.size()) > Rate)
            return;
        if (Dp == 0) {
            Points.push_back({P, V});
        } else {
            const std::int64_t Step = Dp > 0 ? 1 : -1;
            for (std::int64_t i = 0; i <= std::abs(Dp); ++i) {
                const std::int64_t p = LastPos + i * Step;
                const double Value = static_cast<double>(p - LastPos) / static_cast<double>(Dp) *
                                         static_cast<double>(Dv) +
                                     static_cast<double>(LastVal);
                Points.push_back({p, std::llrint(Value)});
            }
        }
        LastPos = P;
        LastVal = V;
    }
    /// What the stroke makes of samples, index 0 being the first one.
    void Up(std::vector<std::int16_t>& Samples, std::int64_t ViewFrom, std::int64_t ViewTotal,
            int Bits) const {
        const std::int64_t First = std::max<std::int64_t>(ViewFrom, 1);
        const std::int64_t Last =
            std::min<std::int64_t>(ViewFrom + ViewTotal, static_cast<std::int64_t>(Samples.size()));
        std::map<std::int64_t, std::int16_t> Drawn;
        for (const LiteralPoint& Each : Points) {
            if (Each.Pos < First || Each.Pos > Last)
                continue;
            std::int64_t Value = Each.Val;
            if (Bits == 8)
                Value = std::min<std::int64_t>(std::max<std::int64_t>(Value, -128), 127);
            else
                Value = std::min<std::int64_t>(std::max<std::int64_t>(Value, -32767), 32767);
            Drawn[Each.Pos] = static_cast<std::int16_t>(Value);
        }
        if (Drawn.empty())
            return;
        for (std::int64_t Pos = Drawn.begin()->first; Pos <= Drawn.rbegin()->first; ++Pos)
            Samples[static_cast<std::size_t>(Pos) - 1] = Drawn.contains(Pos) ? Drawn[Pos] : 0;
    }

    std::vector<LiteralPoint> Points;

  private:
    std::int64_t LastPos = 0;
    std::int64_t LastVal = 0;
};

} // namespace quoril::test
