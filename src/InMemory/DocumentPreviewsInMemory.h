#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Platform/DocumentPreview.h"

namespace merovanta::inmemory {

/// Previews that show nothing, but know what they were given.
class DocumentPreviewsInMemory : public DocumentPreviewFactory {
 public:
    [[nodiscard]] std::unique_ptr<DocumentPreview> create() override {
        return std::make_unique<Preview>(mPresented);
    }

    /// The paths of all files presented so far.
    [[nodiscard]] const std::vector<std::string>& presented() const { return *mPresented; }

 private:
    class Preview : public DocumentPreview {
     public:
        explicit Preview(std::shared_ptr<std::vector<std::string>> presented)
            : mPresented(std::move(presented)) {}

        void present(const ViewController& /*over*/, const std::string& path) override {
            mPresented->push_back(path);
        }

     private:
        std::shared_ptr<std::vector<std::string>> mPresented;
    };

    std::shared_ptr<std::vector<std::string>> mPresented = std::make_shared<std::vector<std::string>>();
};

}  // namespace merovanta::inmemory
