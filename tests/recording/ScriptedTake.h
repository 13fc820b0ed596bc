// A store for takes that keeps them in memory and fails on request.
#pragma once

#include "base/Failure.h"
#include "recording/RecordTake.h"

namespace quoril::test {

class ScriptedTake final : public TakeStore {
  public:
    void Empty() override {
        FailIfAsked();
        L.clear();
        R.clear();
        ++Emptied;
    }
    void Put(const std::vector<std::int16_t>& RecBuffL,
             const std::vector<std::int16_t>& RecBuffR) override {
        FailIfAsked();
        L.insert(L.end(), RecBuffL.begin() + 1, RecBuffL.end());
        if (!RecBuffR.empty())
            R.insert(R.end(), RecBuffR.begin() + 1, RecBuffR.end());
    }

    std::vector<std::int16_t> L;
    std::vector<std::int16_t> R;
    int Emptied = 0;
    std::string FailWith; ///< empty: nothing fails

  private:
    void FailIfAsked() const {
        if (!FailWith.empty())
            throw Failure(FailWith);
    }
};

/// A block of one sample value: index 1 to `Frames`.
inline std::vector<std::int16_t> BlockOf(std::int16_t Value, std::int32_t Frames) {
    std::vector<std::int16_t> Block(static_cast<std::size_t>(Frames) + 1, Value);
    Block[0] = 0;
    return Block;
}

} // namespace quoril::test
