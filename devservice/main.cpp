#include <boost/asio/signal_set.hpp>
#include <csignal>
#include <iostream>
#include <variant>

#include "Options.h"
#include "Server.h"

using namespace merovanta::devservice;

int main(int argc, char** argv) {
    auto parsed = Options::parse(argc, argv);
    if (const auto* exit = std::get_if<Options::Exit>(&parsed)) {
        (exit->code == 0 ? std::cout : std::cerr) << exit->text;
        return exit->code;
    }
    Server server(std::get<Options>(std::move(parsed)), std::cout);
    boost::asio::signal_set signals(server.context(), SIGINT, SIGTERM);
    signals.async_wait([&server](const boost::system::error_code& error, int) {
        if (!error) server.stop();
    });
    if (const auto problem = server.open()) {
        std::cerr << "merovanta-devservice: " << *problem << '\n';
        return 1;
    }
    std::cout << "Merovanta development service: " << server.url() << std::endl;
    server.run();
    return 0;
}
