#include "Harness.h"

namespace merovanta::conformance {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Screen : public ConformanceTest {};

TEST_F(Screen, TheKeyWindowsRootFillsTheScreen) {
    EXPECT_EQ(controller(), nullptr) << "no window yet";
    harness->show(Page::views);
    ASSERT_NE(controller(), nullptr);
    const auto screen = platform().application().mainScreen();
    EXPECT_GT(screen.scale, 0);
    EXPECT_EQ(screen.bounds, (Rect{0, 0, 300, 400}));
    EXPECT_EQ(root()->bounds(), screen.bounds);
    harness->hide();
    EXPECT_EQ(controller(), nullptr);
}

TEST_F(Screen, TheDeviceHasOneIdentifier) {
    const auto identifier = platform().application().identifierForVendor();
    ASSERT_TRUE(identifier);
    EXPECT_THAT(*identifier, testing::MatchesRegex("[0-9A-F]+-[0-9A-F]+-[0-9A-F]+-[0-9A-F]+-[0-9A-F]+"));
    EXPECT_EQ(identifier->size(), 36);
    EXPECT_EQ(platform().application().identifierForVendor(), identifier);
    for (const auto& language : platform().application().preferredLanguages())
        EXPECT_FALSE(language.empty());
}

TEST_F(Screen, ViewsAreListedBackToFrontWithWhatTheHostGaveThem) {
    harness->show(Page::views);
    const auto views = root()->subviews();
    ASSERT_GE(views.size(), 2);
    EXPECT_EQ(views[0]->className(), "Card");
    EXPECT_EQ(views[1]->className(), "HostButton");
    EXPECT_EQ(views[1]->tag(), 0);
    const auto inner = views[0]->subviews();
    ASSERT_EQ(inner.size(), 2);
    EXPECT_EQ(inner[0]->className(), "SecretField");
    EXPECT_EQ(inner[0]->tag(), 2);
    EXPECT_EQ(inner[1]->className(), "Field");
    EXPECT_EQ(inner[1]->tag(), 3);
    EXPECT_EQ(inner[0]->identity(), view(2)->identity()) << "two handles to one view";
}

TEST_F(Screen, ClassesAreKnownByTheirNameAndTheNamesOfTheirBases) {
    harness->show(Page::views);
    const auto classExists = [this](const std::string& name) -> bool {
        return platform().application().classesExist({name}).at(0);
    };
    for (const auto* name : {"SecretField", "Field"}) {
        EXPECT_TRUE(view(2)->isKindOf(name)) << name;
        EXPECT_TRUE(classExists(name)) << name;
    }
    EXPECT_TRUE(view(3)->isKindOf("Field"));
    EXPECT_FALSE(view(3)->isKindOf("SecretField"));
    for (const auto* name : {"", "Fiel", "Fields", "field", "NoSuchClass"}) {
        EXPECT_FALSE(view(2)->isKindOf(name)) << name;
        EXPECT_FALSE(classExists(name)) << name;
    }
}

TEST_F(Screen, RectanglesAreConvertedThroughNestedViews) {
    harness->show(Page::views);
    const auto secret = view(2);
    EXPECT_EQ(secret->frame(), (Rect{10, 20, 60, 30}));
    EXPECT_EQ(secret->bounds(), (Rect{0, 0, 60, 30}));
    EXPECT_EQ(secret->convert(secret->bounds(), *root()), (Rect{30, 60, 60, 30}));
    EXPECT_EQ(secret->convert({5, 6, 7, 8}, *view(1)), (Rect{15, 26, 7, 8}));
    EXPECT_EQ(secret->convert(secret->bounds(), *view(3)), (Rect{-30, -10, 60, 30}));
    EXPECT_EQ(root()->convert({0, 0, 300, 400}, *secret), (Rect{-30, -60, 300, 400}));
    harness->move(1, {25, 47});
    EXPECT_EQ(secret->convert(secret->bounds(), *root()), (Rect{35, 67, 60, 30}));
}

TEST_F(Screen, AHandleToADeadViewIsSafeAndEmpty) {
    harness->show(Page::views);
    const auto card = view(1);
    const auto secret = view(2);
    EXPECT_TRUE(secret->isAlive());
    harness->destroy(1);
    for (const auto& dead : {card, secret}) {
        EXPECT_FALSE(dead->isAlive());
        EXPECT_EQ(dead->identity(), nullptr);
        EXPECT_EQ(dead->frame(), Rect{});
        EXPECT_EQ(dead->bounds(), Rect{});
        EXPECT_THAT(dead->subviews(), IsEmpty());
        EXPECT_EQ(dead->convert({1, 2, 3, 4}, *root()), Rect{});
        EXPECT_EQ(root()->convert({1, 2, 3, 4}, *dead), Rect{});
        EXPECT_EQ(dead->tag(), 0);
        EXPECT_FALSE(dead->isKindOf("Field"));
    }
}

TEST_F(Screen, ControllersLeadToWhatTheUserSees) {
    harness->show(Page::views);
    EXPECT_EQ(controller()->presentedViewController(), nullptr);
    harness->show(Page::presenting);
    ASSERT_TRUE(passUntil([&] { return controller()->presentedViewController() != nullptr; }));
    const auto presented = controller()->presentedViewController();
    EXPECT_EQ(presented->className(), "PinDialog");
    EXPECT_NE(presented->view(), nullptr);
    EXPECT_EQ(presented->presentedViewController(), nullptr);

    harness->show(Page::navigation);
    const auto entries = controller()->viewControllers();
    ASSERT_TRUE(entries);
    std::vector<std::string> names;
    for (const auto& entry : *entries)
        names.push_back(entry->className());
    EXPECT_THAT(names, ElementsAre("HomePage", "DetailPage")) << "bottom-most first";
    EXPECT_EQ(controller()->selectedViewController(), nullptr);

    harness->show(Page::tabs);
    ASSERT_NE(controller()->selectedViewController(), nullptr);
    EXPECT_EQ(controller()->selectedViewController()->className(), "DetailPage");
    EXPECT_NE(controller()->selectedViewController()->view(), nullptr);
    EXPECT_EQ(controller()->viewControllers(), std::nullopt);
}

TEST_F(Screen, ACoverFillsAViewInFrontOfAllElseAndTakesItsTouches) {
    harness->show(Page::views);
    const auto taps = harness->hostTaps();
    int deaths = 0;
    const auto lay = [&] { return platform().coverViews().create(*root(), "ChatView", [&] { ++deaths; }); };
    auto cover = lay();
    ASSERT_NE(cover, nullptr);
    const auto native = cover->view();
    EXPECT_EQ(native->className(), "ChatView");
    EXPECT_EQ(native->frame(), root()->bounds());
    EXPECT_EQ(root()->subviews().back()->identity(), native->identity());
    harness->tap({70, 325});
    harness->pass(50ms);
    EXPECT_EQ(harness->hostTaps(), taps);
    cover.reset();
    EXPECT_FALSE(native->isAlive());
    harness->pass(50ms);
    EXPECT_EQ(deaths, 0) << "taken away by the library itself";
    cover = lay();
    const auto gone = root();
    harness->close();
    EXPECT_FALSE(cover->view()->isAlive());
    harness->pass(50ms);
    EXPECT_EQ(deaths, 1);
    EXPECT_EQ(platform().coverViews().create(*gone, "ChatView", {}), nullptr);
}

TEST_F(Screen, NothingOfTheLibrarysOwnIsInFrontOfTheWidget) {
    harness->show(Page::views);
    const auto cover = platform().coverViews().create(*root(), "ChatView", {});
    const auto widget = platform().widgets().create(*root(), {});
    PixelBuffer pixels;
    pixels.resize(8, 8);
    const auto drawing = platform().imageOverlays().show(*root(), std::move(pixels), 1);
    const auto laterCover = platform().coverViews().create(*root(), "ChatView", {});
    std::vector<std::string> names;
    for (const auto& view : root()->subviews())
        names.push_back(view->className());
    names.erase(names.begin(), names.end() - 4);
    EXPECT_THAT(names, ElementsAre("ChatView", "ChatView", "PassthroughUIImageView", "DefaultUIView"));
}

}  // namespace
}  // namespace merovanta::conformance
