#include "TryLimit.h"

namespace merovanta::devservice {

bool TryLimit::allows(const std::string& address, Moment now) {
    // The clock may be set back.
    if (now - since_ > kWindow || now < since_) {
        since_ = now;
        ofAll_ = 0;
        tries_.clear();
    }
    if (ofAll_ >= kTriesOfAll) return false;
    std::size_t& tries = tries_[address];
    if (tries >= kTries) return false;
    ++tries;
    ++ofAll_;
    return true;
}

void TryLimit::succeeded(const std::string& address) {
    const auto found = tries_.find(address);
    if (found == tries_.end()) return;
    ofAll_ -= found->second;
    tries_.erase(found);
}

}  // namespace merovanta::devservice
