// Fills a directory with recordings: recordings DIRECTORY PICTURE…, the pictures being JPEG files that come
// in turn. 10,000 sessions of a minute, and one of eight hours with two pictures a second. recordings.mjs
// measures what an agent waits for then.

#include <fstream>
#include <iostream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "RecordingStore.h"
#include "RecordingWriter.h"

namespace {

using namespace merovanta::devservice;
using std::chrono::milliseconds;
using std::chrono::minutes;
using std::chrono::seconds;

constexpr int kSessions = 10'000;
constexpr auto kLongest = std::chrono::hours(8);
constexpr const char* kNames[] = {"Ada Keller", "Jürgen Weiß", "Noor Haddad", "Mia Chen", "Olu Adeyemi"};
constexpr const char* kPages[] = {"LoginPage", "AccountsPage", "TransferPage", "CardsPage", "SettingsPage"};

std::string read(const char* file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

void record(RecordingStore& store, int number, Moment start, milliseconds length, milliseconds pause,
            const std::vector<std::string>& pictures) {
    const auto pick = [number](const auto& list, int step) {
        return list[static_cast<std::size_t>(number + step) % std::size(list)];
    };
    RecordingWriter writer(store, "northbank", "session-" + std::to_string(number), start);
    writer.describe({"visitor-" + std::to_string(number), std::to_string(10'000 + number), pick(kNames, 0),
                     pick(kPages, 0), "visitor", 390, 844});
    int step = 0;
    for (milliseconds at{0}; at <= length; at += pause, ++step) {
        writer.addPicture(pictures[static_cast<std::size_t>(step) % pictures.size()], start + at);
        if (step % 10 == 0) writer.addEvent("tap", "", {{"x", 300 + step % 400}, {"y", 900}}, start + at);
        if (step % 60 == 0) writer.addEvent("page", pick(kPages, step / 60), nullptr, start + at);
        if (step % 120 == 0) writer.addEvent("agent", "Invited to co-browse", nullptr, start + at);
    }
    writer.addEvent("tag", "case-" + std::to_string(number), nullptr, start + length);
    writer.end(start + length);
    writer.flush();
    if (number % 100 == 0) store.index().commit();
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::cerr << "Usage: recordings DIRECTORY PICTURE...\n";
        return 2;
    }
    std::vector<std::string> pictures;
    for (int i = 2; i < argc; ++i)
        pictures.push_back(read(argv[i]));
    RecordingStore store;
    auto problem = store.open(argv[1], {});
    if (!problem) {
        const Moment now = currentMoment();
        for (int number = 0; number < kSessions; ++number)
            record(store, number, now - minutes(2 * (kSessions - number)) - kLongest, seconds(60),
                   seconds(20), pictures);
        record(store, kSessions, now - kLongest, kLongest, milliseconds(500), pictures);
        store.index().commit();
        problem = store.index().takeProblem();
    }
    if (problem) std::cerr << *problem << '\n';
    return problem ? 1 : 0;
}
