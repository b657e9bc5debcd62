#include "General/LogDestination.h"

#include <cstdio>
#include <memory>
#include <mutex>
#include <utility>

namespace merovanta {

namespace {

struct Destination {
    MerovantaLog::Sink sink;
    bool isSilent = false;
};

class Holder {
 public:
    [[nodiscard]] std::shared_ptr<const Destination> get() {
        const std::lock_guard lock(mMutex);
        return mDestination;
    }

    /// Returns the earlier one, to be destroyed outside of the lock: it is the host's, and may log.
    [[nodiscard]] std::shared_ptr<const Destination> exchange(
        std::shared_ptr<const Destination> destination) {
        const std::lock_guard lock(mMutex);
        return std::exchange(mDestination, std::move(destination));
    }

 private:
    std::mutex mMutex;
    std::shared_ptr<const Destination> mDestination = std::make_shared<Destination>();
};

// Never destroyed: other threads may log while the process ends.
Holder& holder() {
    static auto* const instance = new Holder();
    return *instance;
}

thread_local bool isInSink = false;

}  // namespace

void LogDestination::set(MerovantaLog::Sink sink, MerovantaLog::StandardOutput standardOutput) {
    const bool isSilent = sink && standardOutput == MerovantaLog::StandardOutput::isSilent;
    const auto former =
        holder().exchange(std::make_shared<Destination>(Destination{std::move(sink), isSilent}));
}

void LogDestination::write(LogLevel level, std::string_view source, std::string_view text,
                           std::string_view line) {
    const auto destination = holder().get();
    if (!destination->isSilent) {
        std::fwrite(line.data(), 1, line.size(), stdout);
        std::fflush(stdout);
    }
    if (!destination->sink || isInSink) return;
    isInSink = true;
    destination->sink({level, source, text, std::chrono::system_clock::now()});
    isInSink = false;
}

}  // namespace merovanta
