#pragma once

namespace merovanta::devservice {

class Visitor;

/// Is told what happens to the visitors, on the service's thread, after the visitor's state has changed.
class VisitorObserver {
 public:
    virtual ~VisitorObserver() = default;

    /// State, page, identifiers or timeline changed.
    virtual void visitorChanged(const Visitor& visitor) = 0;

    /// A new picture is the visitor's last frame.
    virtual void frameArrived(const Visitor& visitor) = 0;

    /// The visitor is about to be forgotten.
    virtual void visitorRemoved(const Visitor& visitor) = 0;
};

}  // namespace merovanta::devservice
