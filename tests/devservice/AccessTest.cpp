#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "SocketClient.h"
#include "TryLimit.h"

namespace merovanta::devservice::test {
namespace {

constexpr const char* kToken = "correct horse battery";

/// A file that goes with the test.
class File {
 public:
    explicit File(const std::string& content)
        : path_(std::filesystem::temp_directory_path() /
                ("merovanta-" + std::to_string(::getpid()) + "-" + std::to_string(++count_))) {
        std::ofstream(path_) << content;
    }
    ~File() { std::filesystem::remove(path_); }
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    const std::filesystem::path& path() const { return path_; }

 private:
    inline static int count_ = 0;
    std::filesystem::path path_;
};

Options withToken(const File& file) {
    Options options;
    options.authFile = file.path();
    return options;
}

Reply signIn(Service& service, const std::string& token) {
    return service.request("POST", "/console/sign-in", nlohmann::json{{"token", token}}.dump());
}

/// What a browser sends back of a Set-Cookie header.
Service::Headers cookieOf(const Reply& reply) {
    const std::string header = reply.headers.at("Set-Cookie");
    return {{"Cookie", "other=1; " + header.substr(0, header.find(';'))}};
}

TEST(Access, WithoutTheTokenTheConsoleIsClosedAndVisitorsComeAllTheSame) {
    const File file(std::string(kToken) + "\n");
    Service service(withToken(file));
    service.startSession();
    const std::vector<Service::Headers> strangers = {
        {},
        {{"Cookie", "merovanta-agent-" + std::to_string(service.port()) + "=" + std::string(32, 'a')}},
        {{"Authorization", "Bearer wrong"}}};
    for (const auto& headers : strangers) {
        for (const char* path :
             {"/console/api/visitors", "/console/api/visitors/1/frame.jpg", "/console/console.js",
              "/console/api/contacts", "/console/testing.html", "/"}) {
            EXPECT_EQ(service.request("GET", path, {}, headers).status, 401U) << path;
        }
        EXPECT_EQ(service.request("PUT", "/console/api/settings", R"({"x":true})", headers).status, 401U);
        EXPECT_EQ(SocketClient(service, "/console/ws", headers).status(), 401U);
    }
    EXPECT_NE(service.request("GET", "/").body.find("signIn.js"), std::string::npos);
    for (const char* path : {"/console/signIn.js", "/console/favicon.svg", "/cdn/chat/chat.html"})
        EXPECT_EQ(service.request("GET", path).status, 200U) << path;
}

TEST(Access, TheTokenLetsABrowserInUntilItSignsOut) {
    const File file(kToken);
    Service service(withToken(file));
    EXPECT_EQ(signIn(service, "correct horse batterz").status, 401U);
    const Reply byForm = signIn(service, kToken);
    EXPECT_EQ(byForm.status, 204U);
    const std::string cookie = byForm.headers.at("Set-Cookie");
    EXPECT_NE(cookie.find("; HttpOnly; SameSite=Lax"), std::string::npos);
    EXPECT_EQ(cookie.find("correct"), std::string::npos);
    const Reply byAddress = service.request("GET", "/?token=correct%20horse%20battery");
    EXPECT_EQ(byAddress.status, 303U);
    EXPECT_EQ(byAddress.headers.at("Location"), "/");
    for (const Reply* reply : {&byForm, &byAddress}) {
        EXPECT_EQ(service.request("GET", "/", {}, cookieOf(*reply)).status, 200U);
        EXPECT_EQ(SocketClient(service, "/console/ws", cookieOf(*reply)).status(), 101U);
    }
    service.request("POST", "/console/sign-out", {}, cookieOf(byForm));
    EXPECT_EQ(service.request("GET", "/", {}, cookieOf(byForm)).status, 401U);
    EXPECT_EQ(service.request("GET", "/console/api/visitors", {}, cookieOf(byAddress)).status, 200U);
    const Service::Headers program = {{"Authorization", std::string("Bearer ") + kToken}};
    EXPECT_EQ(service.request("GET", "/console/api/visitors", {}, program).status, 200U);
}

TEST(Access, TriesAreLimitedForThoseWhoGuessOnly) {
    const File file(kToken);
    Service service(withToken(file));
    const Reply known = signIn(service, kToken);
    for (std::size_t i = 0; i < TryLimit::kTries; ++i)
        EXPECT_EQ(service.request("GET", "/?token=guess" + std::to_string(i)).status, 401U);
    EXPECT_EQ(signIn(service, kToken).status, 429U) << "the right one, too late";
    EXPECT_EQ(service.request("GET", "/", {}, {{"Authorization", std::string("Bearer ") + kToken}}).status,
              401U);
    EXPECT_EQ(service.request("GET", "/", {}, cookieOf(known)).status, 200U);

    TryLimit limit;
    const Moment start{std::chrono::hours(500'000)};
    for (std::size_t i = 0; i < TryLimit::kTriesOfAll; ++i)
        EXPECT_TRUE(limit.allows(std::to_string(i), start));
    EXPECT_FALSE(limit.allows("another", start));
    EXPECT_TRUE(limit.allows("another", start + TryLimit::kWindow + std::chrono::seconds(1)));
}

TEST(Access, TheServiceMakesATokenWhereOthersCanReachIt) {
    std::ostringstream log;
    for (const bool everywhere : {false, true}) {
        Options options;
        options.port = 0;
        options.host = everywhere ? "0.0.0.0" : "127.0.0.1";
        options.auth = !everywhere;
        Server server(options, log);
        ASSERT_FALSE(server.open());
        const std::size_t at = server.url().find("/?token=");
        ASSERT_NE(at, std::string::npos);
        EXPECT_EQ(server.url().size() - at, 8 + 32U);
    }
    Server open({}, log);
    EXPECT_EQ(open.url().find("token"), std::string::npos);
    const File file("short");
    Server weak(withToken(file), log);
    EXPECT_TRUE(weak.open());
}

TEST(Access, OnlyTheListedTenantsAppsAreServed) {
    const File file("T  secret # the one\n\n# another\nU other\n");
    Options options;
    options.tenantsFile = file.path();
    Service service(options);
    service.startSession();
    EXPECT_EQ(service.post(ProtoMessageList()).status, 200U);
    const std::string query = "?sId=S&tId=X&vId=V&id=I&t=secret&shrId=1&vsId=S&url=P&fsTy=l";
    for (const auto& [method, path] : {std::pair{"GET", "/api/ix/m"},
                                       {"POST", "/api/ix/m"},
                                       {"DELETE", "/api/ix/m"},
                                       {"POST", "/api/in/co"},
                                       {"POST", "/rest/v1/customerstatus/tag/byVisitor/V"}}) {
        EXPECT_EQ(service.request(method, path + query).status, 403U) << method << ' ' << path;
    }
    EXPECT_EQ(service.request("POST", "/api/in/im/c", R"({"tId":"X","sId":"S"})").status, 403U);
    EXPECT_EQ(service.request("POST", "/api/in/io/l", R"({"m":{"tId":"X","sId":"S"}})").status, 403U);
    EXPECT_EQ(SocketClient(service, "/api/in/wc/ws" + query, {}).status(), 403U);
    const std::string socket = "/api/in/imws?sId=S&vId=V&id=I&shrId=1&vsId=S&url=P&fsTy=l";
    for (const auto& [more, status] :
         {std::pair{"&tId=T&t=secret", 101U}, {"&tId=T&t=other", 403U}, {"&tId=X&t=secret", 403U}})
        EXPECT_EQ(SocketClient(service, socket + more, {}).status(), status) << more;
    const File broken("T\n");
    options.tenantsFile = broken.path();
    std::ostringstream log;
    EXPECT_TRUE(Server(options, log).open());
}

}  // namespace
}  // namespace merovanta::devservice::test
