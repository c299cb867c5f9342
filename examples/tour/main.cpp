// A tour through the library: an application that uses every area against a service that serves the
// device file named on the command line, tells what it asked and what came back, and exits with 1 if
// anything came back that the device file does not say.
#include "story.h"

#include <fstream>

int main(int argc, char** argv)
{
    if (argc != 2) {
        fmt::print(stderr, "usage: tour DEVICE-FILE\n");
        return 2;
    }
    std::ifstream file(argv[1]);
    tour::json device = tour::json::parse(file, nullptr, false);
    if (device.is_discarded()) {
        fmt::print(stderr, "tour: {} is no device file\n", argv[1]);
        return 2;
    }
    tour::story story(std::move(device), std::filesystem::path(argv[1]).parent_path());
    tour::common(story);
    tour::systeminfo(story);
    tour::card(story);
    tour::job(story);
    tour::dept(story);
    tour::jobinfo(story);
    tour::webservice(story);
    return story.end();
}
