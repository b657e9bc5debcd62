#pragma once

#include <memory>
#include <string>

#include "General/Panoptra/ApplicationConfigWrapper.h"
#include "General/Panoptra/Communication/RegisteredClient.h"
#include "General/Panoptra/Communication/XhrRunner.h"
#include "General/Panoptra/Network/MerovantaAPI.h"

namespace merovanta {

/// Registers the clients of the polling and sets the runner's pace by them. The table of clients is one for
/// the whole process. Thread: main.
class CommunicationBase : public std::enable_shared_from_this<CommunicationBase> {
 public:
    CommunicationBase(const std::shared_ptr<MerovantaAPI>& merovantaAPI,
                      std::shared_ptr<ApplicationConfigWrapper> applicationConfigWrapper);
    virtual ~CommunicationBase() = default;
    CommunicationBase(const CommunicationBase&) = delete;
    CommunicationBase& operator=(const CommunicationBase&) = delete;

    /// Registers, later, the report of the visitor's presence; an unknown visitor is tagged first.
    virtual void registerStatus();
    virtual void releaseStatus();

    virtual void release(const std::string& id);

    /// Forgets all clients, but leaves the runner as it is: it finds nothing to say until the next
    /// registration or release.
    virtual void releaseAll();

    void registerClient(RegisteredClient client);

    /// Goes on to poll if failures have brought it to a pause.
    void resumePolling() { runner->resume(); }

 private:
    void insertStatus(const std::string& pageName);
    void retune();

    std::shared_ptr<XhrRunner> runner;
    std::shared_ptr<ApplicationConfigWrapper> applicationConfigWrapper;
};

}  // namespace merovanta
