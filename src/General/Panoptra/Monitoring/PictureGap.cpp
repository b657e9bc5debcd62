#include "General/Panoptra/Monitoring/PictureGap.h"

#include <algorithm>

#include "General/Log.h"

namespace merovanta {

namespace {

constexpr PictureGap::Time tolerated{3000};
constexpr int longestPause = 9;

}  // namespace

void PictureGap::wanted(Time now) {
    if (!mSince) mSince = now;
    if (mIsLogged || now - *mSince <= tolerated) return;
    mIsLogged = true;
    Log::warning("No picture could be taken for more than 3 seconds");
}

bool PictureGap::isDue() {
    if (mTicksToWait == 0) return true;
    --mTicksToWait;
    return false;
}

void PictureGap::dropped() {
    mTicksToWait = mPause;
    mPause = std::min(2 * mPause + 1, longestPause);
}

void PictureGap::ended() {
    if (mIsLogged) Log::warning("Pictures are taken again");
    reset();
}

}  // namespace merovanta
