#pragma once

#include <memory>
#include <string>

#include "Platform/ViewController.h"

namespace merovanta {

/// Shows one document over the host application: pages of a PDF, a picture, text. Anything else, but never
/// what could run as a program, it offers to hand to the system, and does so when the visitor in person asks
/// for it: no played-back tap does. Destroying it closes it. Thread: main.
class DocumentPreview {
 public:
    virtual ~DocumentPreview() = default;

    /// Presents the file, animated, over this controller, in the place of the one shown so far. The visitor
    /// closes it.
    virtual void present(const ViewController& over, const std::string& path) = 0;
};

/// Thread: main.
class DocumentPreviewFactory {
 public:
    virtual ~DocumentPreviewFactory() = default;

    [[nodiscard]] virtual std::unique_ptr<DocumentPreview> create() = 0;
};

}  // namespace merovanta
