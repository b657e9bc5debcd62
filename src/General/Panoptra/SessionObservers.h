#pragma once

#include <Merovanta/Observation.h>
#include <Merovanta/SessionStatus.h>

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace merovanta {

/// Tells the host what becomes of the session: each observer hears of every change once, in order, after what
/// brought it about is done. Whatever an observer does inside its call is told after that call. Thread: main.
class SessionObservers : public std::enable_shared_from_this<SessionObservers> {
 public:
    using Observer = std::function<void(const SessionStatus&)>;

    /// As long as one lives nothing is told; the last tells what has come up. Without one it is told in a
    /// turn of its own.
    class Scope {
     public:
        explicit Scope(std::shared_ptr<SessionObservers> observers);
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;
        ~Scope();

     private:
        std::shared_ptr<SessionObservers> mObservers;
    };

    /// Hears of the changes from now on. Never null.
    [[nodiscard]] std::unique_ptr<Observation> add(Observer observer);

    /// The status has changed. Once all have been told, afterwards is run.
    void changed(const SessionStatus& status, std::function<void()> afterwards);

    [[nodiscard]] const SessionStatus& status() const { return mStatus; }

 private:
    struct Entry {
        Observer observer;
        /// The number of the last change before it came.
        std::uint64_t knows = 0;
    };
    struct Change {
        SessionStatus status;
        std::uint64_t number = 0;
        std::function<void()> afterwards;
    };
    class Handle;

    void tell();
    void tell(const Change& change);

    SessionStatus mStatus;
    std::vector<std::shared_ptr<Entry>> mEntries;
    std::deque<Change> mUntold;
    std::uint64_t mNumber = 0;
    int mScopes = 0;
    bool mIsTelling = false;
};

}  // namespace merovanta
