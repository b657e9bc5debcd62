#pragma once

#include <chrono>
#include <optional>

namespace merovanta {

/// Keeps count of the pictures that could not be had, so that the agent is not left with an old one without a
/// word, and the host not without end asked for frames. Time is handed in and never runs backwards.
class PictureGap {
 public:
    using Time = std::chrono::milliseconds;

    /// A picture is wanted, to be told at each tick for as long as there is none. Logs it once if that goes
    /// on for more than three seconds.
    void wanted(Time now);

    /// Whether it is time for another try, to be asked once a tick: each picture that fails lets more ticks
    /// pass before the next, up to three seconds.
    [[nodiscard]] bool isDue();

    /// A try has failed.
    void dropped();

    /// There is a picture, or none is wanted any more.
    void ended();

    /// Forgets everything.
    void reset() { *this = {}; }

 private:
    std::optional<Time> mSince;
    int mPause = 0;
    int mTicksToWait = 0;
    bool mIsLogged = false;
};

}  // namespace merovanta
