// Web services and certificates against the stand-in service in another process.
#include "tarn_webservice_facade.h"

#include "integration/processes.h"

#include <csignal>

namespace {

using namespace testing_processes;
using norvane::tarn_webservice_facade;

constexpr unsigned int not_found = 0x02000005;
constexpr unsigned int exists = 0x02000006;

tarn_webservice_facade& facade() { return *tarn_webservice_facade::tarn_webservice_get_instance(); }

TARN_WEBSERVICE_KIND kind(unsigned int number) { return static_cast<TARN_WEBSERVICE_KIND>(number); }

class webservice_service : public process_test {};

TEST_F(webservice_service, what_is_reserved_is_taken_until_it_is_released)
{
    const process service = start_service();
    EXPECT_EQ(facade().tarn_webservice_reserve(kind(1), "printing"), 0U);
    EXPECT_EQ(facade().tarn_webservice_reserve(kind(1), "printing"), exists);
    EXPECT_EQ(facade().tarn_webservice_release(kind(1), "printing"), 0U);
    EXPECT_EQ(facade().tarn_webservice_release(kind(1), "printing"), not_found);
    EXPECT_EQ(facade().tarn_webservice_reserve(kind(1), "printing"), 0U);
}

TEST_F(webservice_service, reservations_are_per_kind_and_name)
{
    const process service = start_service();
    EXPECT_EQ(facade().tarn_webservice_reserve(kind(1), "printing"), 0U);
    EXPECT_EQ(facade().tarn_webservice_reserve(kind(2), "printing"), 0U);
    EXPECT_EQ(facade().tarn_webservice_reserve(kind(1), "scanning"), 0U);
    EXPECT_EQ(facade().tarn_webservice_release(kind(2), "scanning"), not_found);
    EXPECT_EQ(facade().tarn_webservice_release(kind(2), "printing"), 0U);
    EXPECT_EQ(facade().tarn_webservice_reserve(kind(1), "printing"), exists) << "another kind was released";
}

TEST_F(webservice_service, a_kind_that_the_device_does_not_have_is_refused)
{
    const process service = start_service();
    EXPECT_EQ(facade().tarn_webservice_reserve(kind(3), "printing"), not_found);
    EXPECT_EQ(facade().tarn_webservice_release(kind(3), "printing"), not_found);
}

TEST_F(webservice_service, what_the_device_has_reserved_is_taken)
{
    const process service = start_service();
    EXPECT_EQ(facade().tarn_webservice_reserve(kind(5), "maintenance"), exists);
    EXPECT_EQ(facade().tarn_webservice_release(kind(5), "maintenance"), 0U);
}

TEST_F(webservice_service, names_are_one_when_their_first_127_bytes_are)
{
    const process service = start_service();
    const std::string name(127, 'n');
    EXPECT_EQ(facade().tarn_webservice_reserve(kind(1), name + "one"), 0U);
    EXPECT_EQ(facade().tarn_webservice_reserve(kind(1), name + "two"), exists);
    EXPECT_EQ(facade().tarn_webservice_release(kind(1), name), 0U);
}

TEST_F(webservice_service, certificates_lie_where_the_device_says)
{
    const process service = start_service();
    std::string path = "before";
    EXPECT_EQ(facade().tarn_webservice_get_certificate(static_cast<TARN_SSL_FILE_TYPE>(1), path), 0U);
    EXPECT_EQ(path, "/certificates/server.pem");
    EXPECT_EQ(facade().tarn_webservice_get_certificate(static_cast<TARN_SSL_FILE_TYPE>(2), path), not_found);
    EXPECT_EQ(path, "");

    std::string second;
    EXPECT_EQ(facade().tarn_webservice_get_hdo_certificate_filepath(path, second), 0U);
    EXPECT_EQ(path, "/certificates/hdo-first.pem");
    EXPECT_EQ(second, "/certificates/hdo-second.pem");
}

TEST_F(webservice_service, a_missing_certificate_of_the_pair_shows_only_if_it_is_the_second)
{
    const auto with_certificate = [this](const std::string& type) {
        return start_service(write_file("device-" + type + ".json", R"({ "webservice": { "certificates": [
            { "type": )" + type + R"(, "path": "/here" } ] } })"));
    };
    std::string first = "before";
    std::string second = "before";
    {
        const process service = with_certificate("11");
        EXPECT_EQ(facade().tarn_webservice_get_hdo_certificate_filepath(first, second), 0U);
        EXPECT_EQ(first, "");
        EXPECT_EQ(second, "/here");
    }
    const process service = with_certificate("10");
    EXPECT_EQ(facade().tarn_webservice_get_hdo_certificate_filepath(first, second), not_found);
    EXPECT_EQ(first, "/here");
    EXPECT_EQ(second, "");
}

TEST_F(webservice_service, reservations_are_saved_on_request)
{
    const auto saved = directory() / "saved.json";
    {
        process service = start_service({}, {"--save", saved});
        EXPECT_EQ(facade().tarn_webservice_reserve(kind(2), "printing"), 0U);
        EXPECT_EQ(facade().tarn_webservice_release(kind(5), "maintenance"), 0U);
        EXPECT_EQ(service.stop(SIGTERM), 0);
    }
    const process service = start_service(saved);
    EXPECT_EQ(facade().tarn_webservice_reserve(kind(2), "printing"), exists);
    EXPECT_EQ(facade().tarn_webservice_reserve(kind(5), "maintenance"), 0U);
}

TEST_F(webservice_service, a_wrong_device_file_is_explained)
{
    const std::vector<std::pair<std::string, std::string>> wrong = {
        {"\"kinds\": [ 1 ],\n\"reserved\": [ { \"kind\": 2, \"name\": \"x\" } ]",
         ":2: /webservice/reserved/0/kind: expected one of the device's \"kinds\""},
        {"\"kinds\": [ \"x\" ]", ":1: /webservice/kinds/0: expected a 32-bit number"},
        {"\"certificates\": [ { \"type\": 1, \"path\": \"" + std::string(516, 'p') + "\" } ]",
         ":1: /webservice/certificates/0/path: expected a path of at most 515 bytes"},
    };
    for (const auto& [content, message] : wrong) {
        const auto file = write_file("wrong.json", R"({ "webservice": { )" + content + " } }");
        std::string output;
        EXPECT_EQ(run("tarnsim", {file}, output), 1);
        EXPECT_NE(output.find(file.string() + message), std::string::npos) << output;
    }
}

}  // namespace
