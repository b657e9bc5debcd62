#pragma once

#include <Merovanta/Export.h>

#include <atomic>
#include <vector>

namespace merovanta::qt {

/// Tells the adapters when the application object begins and ends to exist. The adapters are made before it
/// and outlive it, yet most of Qt works only while it is there.
class MEROVANTA_INTERNAL ApplicationLifeQt {
 public:
    /// Both calls come on the main thread.
    class Observer {
     public:
        virtual void applicationStarted() = 0;
        /// The application object is being destroyed and still usable.
        virtual void applicationEnding() = 0;

     protected:
        ~Observer() = default;
    };

    enum class Phase { before, running, ended };

    ApplicationLifeQt(const ApplicationLifeQt&) = delete;
    ApplicationLifeQt& operator=(const ApplicationLifeQt&) = delete;

    [[nodiscard]] static ApplicationLifeQt& instance();

    /// An observer that comes late is told of the start at once. The end is told in the reverse order.
    /// Thread: main.
    void add(Observer& observer);
    void remove(Observer& observer);

    /// Any thread.
    [[nodiscard]] Phase phase() const { return mPhase; }

 private:
    ApplicationLifeQt() = default;

    static void start();
    static void end();

    std::atomic<Phase> mPhase{Phase::before};
    std::vector<Observer*> mObservers;
};

}  // namespace merovanta::qt
