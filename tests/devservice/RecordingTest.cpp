#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "RecordingCatalog.h"
#include "Service.h"
#include "SessionRecorder.h"
#include "VisitorAudience.h"

namespace merovanta::devservice::test {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr Moment kStart{seconds(1'700'000'000)};

/// A directory that goes with the test.
class Directory {
 public:
    Directory() {
        std::string name = (fs::temp_directory_path() / "recordings-XXXXXX").string();
        path = mkdtemp(name.data());
    }
    ~Directory() { fs::remove_all(path); }
    fs::path path;
};

/// What records in a process: everything but the network, in virtual time.
class Process {
 public:
    explicit Process(const fs::path& directory, RecordingStore::Limits limits = {}) {
        audience.add(recorder);
        recorder.open(directory, limits);
    }

    Visitor& start(const std::string& session = "S") {
        Visitor& visitor = visitors.obtain("T", session, now);
        const json record = {{"shId", "48213"},
                             {"vId", "V-" + session},
                             {"sId", session},
                             {"tId", "T"},
                             {"page", {{"width", 390}, {"height", 844}}}};
        visitor.initialised(InitRecord::parse(record), now);
        visitor.connected("LoginPage", Transport::Polling, now);
        return visitor;
    }

    /// A second goes by, and a picture comes.
    void show(Visitor& visitor, std::size_t bytes = 0) {
        ProtoMessageList list;
        list.add_messages()->add_screenshotevent()->set_image(jpeg(390, 844, bytes));
        receive(visitor, list);
    }
    void receive(Visitor& visitor, const ProtoMessageList& list) {
        visitor.received(list, 100, Transport::Polling, now += seconds(1));
    }
    bool settle(int times = 1) {
        bool good = true;
        for (int i = 0; i < times; ++i)
            good = recorder.settle(now += SessionRecorder::kSettlePause);
        return good;
    }

    std::int64_t found(const std::string& query) {
        const json result = catalog.list(RecordingQuery::parse(Target::parse("/?" + query)));
        EXPECT_FALSE(store.index().failed()) << query;
        return result["total"].get<std::int64_t>();
    }
    /// The kinds of what happened, but for warnings.
    std::vector<std::string> kinds(std::int64_t recording = 1) {
        std::vector<std::string> result;
        const json contents = json::parse(catalog.contents(recording));
        for (const json& event : contents["events"])
            if (event["kind"] != "warning") result.push_back(event["kind"]);
        return result;
    }
    std::int64_t pictures(std::int64_t recording = 1) { return catalog.find(recording)["pictures"]; }

    Moment now = kStart;
    std::ostringstream log;
    RecordingStore store;
    VisitorAudience audience;
    VisitorRegistry visitors{audience};
    ContactRegistry contacts{[](const Contact&) {}};
    SessionRecorder recorder{store, visitors, contacts, log};
    RecordingCatalog catalog{store};
};

TEST(Recording, HoldsWhatTheConsoleShowsAndIsFoundByIt) {
    const Directory directory;
    Process process(directory.path);
    Contact& contact = process.contacts.obtain("T", "V-S", kStart);
    process.contacts.identify(contact, {{"firstname", "J\xC3\xBCrgen"}, {"lastname", "O'Neil-Wu"}}, kStart);
    process.contacts.addMessage(contact,
                                {.at = kStart - seconds(9), .text = "before", .key = {}, .document = {}});
    Visitor& visitor = process.start();
    process.show(visitor);
    ProtoMessageList list;
    list.add_messages()->set_pagechange("AccountsPage");
    list.add_messages()->set_tag("mortgage");
    list.add_messages()->add_clickevent()->set_x(31);
    process.receive(visitor, list);
    visitor.agentActed("Invited", {"a1", "Ada"}, process.now);
    process.contacts.addMessage(contact, {.at = process.now, .text = "hello", .key = {}, .document = {}});
    ASSERT_TRUE(process.settle());
    process.show(visitor, 50'000);
    visitor.ended(process.now);
    ASSERT_TRUE(process.settle());

    const json contents = json::parse(process.catalog.contents(1));
    EXPECT_EQ(contents["pictures"], json({1000, 3250}));
    EXPECT_EQ(process.kinds(), (std::vector<std::string>{"init", "connect", "picture", "page", "tag", "tap",
                                                         "agent", "chat", "end"}));
    EXPECT_NE(contents["events"].dump().find(R"("frame":{"height":844,"width":390},"x":31.0)"),
              std::string::npos);
    EXPECT_EQ(process.catalog.picture(1, 1), jpeg(390, 844));
    EXPECT_EQ(process.catalog.picture(1, 2), jpeg(390, 844, 50'000));
    const json recording = process.catalog.find(1);
    EXPECT_EQ(recording["name"], "J\xC3\xBCrgen O'Neil-Wu");
    EXPECT_EQ(recording["ending"], "background");
    EXPECT_EQ(recording["pictures"], 2);

    process.catalog.setLabels(1, {"follow up"});
    process.catalog.addNote(1, "Ada", "Asked for a callback", 1500, process.now);
    for (const char* query : {"q=",
                              "q=48213",
                              "q=482",
                              "q=code:482",
                              "q=jurgen",
                              "q=O'Neil-Wu",
                              "q=visitor:v-s",
                              "q=accounts login",
                              "q=page:accounts",
                              "q=tag:mortgage",
                              "q=tag:follow",
                              "q=note:callback ada",
                              "show=agent",
                              "show=chat",
                              "show=notes",
                              "from=1700000000000",
                              "to=1700000000001",
                              "q=-- ...",
                              "q=\"",
                              "q=code:\"48213",
                              "show=' OR 1"}) {
        EXPECT_EQ(process.found(query), 1) << query;
    }
    for (const char* query : {"q=48213 stranger", "q=page:48213", "q=before", "q=* OR *", "q=search:x) --",
                              "q={page} : x", "q=NEAR(a b, 2)", "q=%00zz", "q=\xFF\xFE", "show=live",
                              "from=1700000000001", "to=1700000000000", "offset=1&q=zz"}) {
        EXPECT_EQ(process.found(query), 0) << query;
    }
    EXPECT_TRUE(process.catalog.removeNote(1, 1));
    EXPECT_EQ(process.found("q=callback"), 0);
}

TEST(Recording, AProcessThatIsKilledLeavesAllButWhatWasNotSettled) {
    const Directory directory, copy, halved;
    Process process(directory.path);
    Visitor& visitor = process.start();
    for (int i = 0; i < 10; ++i)
        process.show(visitor, 1000);
    process.settle();
    process.show(visitor, 1000);
    // The files as they are at this moment, with a transaction open and a picture that no index names.
    fs::copy(directory.path, copy.path, fs::copy_options::recursive | fs::copy_options::overwrite_existing);
    fs::copy(copy.path, halved.path, fs::copy_options::recursive | fs::copy_options::overwrite_existing);
    std::ofstream(copy.path / "pictures" / "77.jpegs") << "of a recording that was deleted";
    {
        Process after(copy.path);
        EXPECT_EQ(after.pictures(), 10);
        EXPECT_EQ(after.catalog.find(1)["ending"], "service");
        EXPECT_FALSE(fs::exists(copy.path / "pictures" / "77.jpegs"));
        after.now = process.now;
        after.show(after.start(), 2000);
        after.settle();
        EXPECT_EQ(after.pictures(), 11) << "the same session goes on in its recording";
        EXPECT_EQ(after.catalog.picture(1, 11), jpeg(390, 844, 2000));
        EXPECT_EQ(after.found("show=live"), 1);
    }
    // As a machine may leave it that lost its power.
    fs::resize_file(halved.path / "pictures" / "1.jpegs", 5500);
    Process after(halved.path);
    EXPECT_EQ(after.pictures(), 5);
    EXPECT_TRUE(after.catalog.picture(1, 5));
    EXPECT_FALSE(after.catalog.picture(1, 6));
}

TEST(Recording, IsSwitchedOffAndDeletedForGoodInALiveSession) {
    const Directory directory;
    {
        Process process(directory.path);
        Visitor& visitor = process.start();
        process.show(visitor);
        process.recorder.switchOff(visitor, true, {}, process.now);
        process.show(visitor);
        process.settle();
        EXPECT_EQ(visitor.summary(process.now)["recording"], json::parse(R"({"state":"off","id":"1"})"));
    }
    Process process(directory.path);
    Visitor& visitor = process.start();
    process.show(visitor);
    EXPECT_EQ(process.pictures(), 1) << "the switch holds after a restart";
    process.recorder.switchOff(visitor, false, {}, process.now);
    process.show(visitor);
    process.settle();
    EXPECT_EQ(process.pictures(), 2);
    EXPECT_EQ(process.kinds().back(), "agent");

    process.recorder.letGo(1);
    EXPECT_TRUE(process.store.remove(1));
    process.show(visitor);
    process.settle();
    EXPECT_EQ(process.found("q="), 0);
    EXPECT_FALSE(fs::exists(process.store.pictures(1)));
    EXPECT_EQ(visitor.summary(process.now)["recording"]["state"], "off");
}

TEST(Recording, AFailingDiskIsSaidOnceAndTriedAgain) {
    const Directory directory;
    Process process(directory.path);
    Visitor& first = process.start("first");
    process.show(first);
    Visitor& gone = process.start("gone");
    process.show(gone);
    process.settle();
    fs::create_directory(process.store.pictures(3));
    Visitor& visitor = process.start("second");
    process.show(visitor);
    process.show(first);
    process.settle(200);
    process.show(visitor);
    process.settle(200);
    const json recording = first.summary(process.now)["recording"];
    EXPECT_EQ(recording["state"], "failed");
    EXPECT_NE(recording["problem"].get<std::string>().find("3.jpegs"), std::string::npos);
    EXPECT_EQ(visitor.lastFrame()->number, 2U) << "live work goes on";
    EXPECT_TRUE(process.catalog.find(3).is_null()) << "nothing is kept by halves";
    gone.ended(process.now);
    fs::remove(process.store.pictures(3));
    process.show(visitor);
    process.show(first);
    process.settle(4);
    EXPECT_EQ(process.pictures(1), 2);
    EXPECT_EQ(process.pictures(3), 1);
    EXPECT_EQ(process.found("show=live"), 2) << "an end during the failure is not forgotten";
    const std::string log = process.log.str();
    EXPECT_EQ(std::count(log.begin(), log.end(), '\n'), 2) << log;
    EXPECT_NE(log.find("recording goes on"), std::string::npos);
}

TEST(Recording, IsKeptWithinItsLimits) {
    const Directory directory;
    Process process(directory.path, {std::chrono::days(2), 100'000});
    for (const char* session : {"old", "large", "late"}) {
        Visitor& visitor = process.start(session);
        process.show(visitor, 40'000);
        visitor.ended(process.now);
        process.settle(4);
        process.now += std::chrono::hours(session == std::string("old") ? 60 : 1);
    }
    EXPECT_EQ(process.found("q="), 2) << "the old one is gone";
    Visitor& visitor = process.start("live");
    process.show(visitor, 40'000);
    process.settle(5);
    EXPECT_TRUE(process.catalog.find(2).is_null()) << "what is too much goes, the oldest first";
    EXPECT_FALSE(process.catalog.find(3).is_null());
    for (int i = 0; i < 4; ++i)
        process.show(visitor, 40'000);
    process.settle(5);
    EXPECT_EQ(process.found("q="), 1);
    EXPECT_EQ(process.recorder.problem(), "the sessions that go on fill all that may be kept");
    process.show(visitor, 40'000);
    process.settle();
    EXPECT_EQ(process.pictures(4), 5);

    // Neither does one visitor fill it with events alone.
    Process flooded(directory.path / "flooded");
    Visitor& chatty = flooded.start();
    ProtoMessageList list;
    for (int i = 0; i < 1000; ++i)
        list.add_messages()->set_tag(std::string(500, 'x') + std::to_string(i));
    for (int i = 0; i < 20; ++i)
        flooded.receive(chatty, list);
    flooded.settle();
    EXPECT_LE(flooded.catalog.find(1)["bytes"], RecordingWriter::kMaxEventBytes + 2000);
    EXPECT_EQ(flooded.recorder.problem(), std::nullopt);
}

TEST(Recording, TheApiTakesNothingThatItShouldNot) {
    const Directory directory;
    Options options;
    options.dataDirectory = directory.path;
    Service service(options);
    service.startSession();
    const std::string path = "/console/api/recordings";
    ASSERT_EQ(service.request("PUT", "/console/api/visitors/1/recording", R"({"on":true})").status, 200U);
    ASSERT_EQ(service.request("GET", path).json()["total"], 1);
    const std::string large(3000, 'x');
    const std::vector<std::tuple<const char*, std::string, std::string, unsigned>> requests = {
        {"GET", "/0", "", 404},
        {"GET", "/-1", "", 404},
        {"GET", "/1e0", "", 404},
        {"GET", "/99999999999999999999", "", 404},
        {"GET", "/..%2F..%2Findex.sqlite", "", 404},
        {"GET", "/1/pictures/..%2F1", "", 404},
        {"GET", "/1/pictures/1", "", 404},
        {"GET", "/2/contents", "", 404},
        {"PUT", "/1/labels", R"({"labels":[1]})", 400},
        {"PUT", "/1/labels", R"({"labels":"x"})", 400},
        {"PUT", "/2/labels", R"({"labels":[]})", 404},
        {"POST", "/1/notes", R"({"text":" "})", 400},
        {"POST", "/1/notes", json{{"text", large}}.dump(), 400},
        {"POST", "/1/notes", R"({"text":"x","at":"1"})", 201},
        {"DELETE", "/1/notes/7", "", 404},
        {"DELETE", "/7", "", 404},
    };
    for (const auto& [method, rest, body, status] : requests)
        EXPECT_EQ(service.request(method, path + rest, body).status, status) << method << " " << rest << body;
    EXPECT_EQ(service.request("DELETE", path + "/1", "", {{"Origin", "http://evil.example"}}).status, 403U);
    EXPECT_EQ(service.request("DELETE", path + "/1").status, 200U);
    EXPECT_EQ(service.request("GET", path + "/1").status, 404U);
    EXPECT_EQ(service.visitor()["recording"]["state"], "off");

    EXPECT_EQ(Service().request("PUT", "/console/api/visitors/1/recording", "{}").status, 404U);
    for (const fs::path& unusable : {directory.path, fs::path("/proc/recordings")}) {
        Options without;
        without.dataDirectory = unusable;
        Service live(without);
        live.startSession();
        EXPECT_EQ(live.visitor()["state"], "live") << "the first has it open, nobody can write to the second";
        EXPECT_TRUE(live.request("GET", path).json()["storage"]["problem"].is_string());
    }
}

}  // namespace
}  // namespace merovanta::devservice::test
