#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "Platform/DocumentPreview.h"

namespace merovanta::inmemory {

/// Previews that show nothing, but know what they were given.
class DocumentPreviewsInMemory : public DocumentPreviewFactory {
 public:
    [[nodiscard]] std::unique_ptr<DocumentPreview> create() override {
        return std::make_unique<Preview>(mPresented, mOpen);
    }

    /// The paths of all files presented so far.
    [[nodiscard]] const std::vector<std::string>& presented() const { return *mPresented; }

    /// How many previews show a file.
    [[nodiscard]] int open() const { return *mOpen; }

 private:
    class Preview : public DocumentPreview {
     public:
        Preview(std::shared_ptr<std::vector<std::string>> presented, std::shared_ptr<int> open)
            : mPresented(std::move(presented)), mOpen(std::move(open)) {}
        Preview(const Preview&) = delete;
        Preview& operator=(const Preview&) = delete;
        ~Preview() override {
            if (mIsOpen) --*mOpen;
        }

        void present(const ViewController& /*over*/, const std::string& path) override {
            mPresented->push_back(path);
            if (!std::exchange(mIsOpen, true)) ++*mOpen;
        }

     private:
        std::shared_ptr<std::vector<std::string>> mPresented;
        std::shared_ptr<int> mOpen;
        bool mIsOpen = false;
    };

    std::shared_ptr<std::vector<std::string>> mPresented = std::make_shared<std::vector<std::string>>();
    std::shared_ptr<int> mOpen = std::make_shared<int>(0);
};

}  // namespace merovanta::inmemory
