// The library against the stand-in service in another process: a service that comes late, dies in the
// middle of a call and comes back, and calls of many threads.
#include "tarn_systeminfo_facade.h"

#include "integration/processes.h"

#include <csignal>
#include <thread>

namespace {

using namespace testing_processes;
using norvane::tarn_systeminfo_facade;

constexpr auto sleep_minutes = static_cast<TARN_ENTKEY>(1);
constexpr auto location = static_cast<TARN_ENTKEY>(100);

tarn_systeminfo_facade& facade() { return *tarn_systeminfo_facade::tarn_systeminfo_get_instance(); }

class systeminfo_service : public process_test {};

TEST_F(systeminfo_service, values_are_stored_and_come_back)
{
    const process service = start_service();
    unsigned int number = 0;
    EXPECT_EQ(facade().tarn_systeminfo_get_value(sleep_minutes, number), 0U);
    EXPECT_EQ(number, 30U);
    EXPECT_EQ(facade().tarn_systeminfo_set_value(sleep_minutes, 31U), 0U);
    EXPECT_EQ(facade().tarn_systeminfo_get_value(sleep_minutes, number), 0U);
    EXPECT_EQ(number, 31U);

    std::string text;
    EXPECT_EQ(facade().tarn_systeminfo_set_value(location, std::string("Basement")), 0U);
    EXPECT_EQ(facade().tarn_systeminfo_get_value(location, text), 0U);
    EXPECT_EQ(text, "Basement");
}

TEST_F(systeminfo_service, what_the_device_does_not_have_is_refused)
{
    const process service = start_service();
    unsigned int number = 5;
    std::string text = "before";
    EXPECT_EQ(facade().tarn_systeminfo_get_value(static_cast<TARN_ENTKEY>(9999), number), 0x02000003U);
    EXPECT_EQ(number, 0U);
    EXPECT_EQ(facade().tarn_systeminfo_get_value(sleep_minutes, text), 0x02000004U) << "a number is no text";
    EXPECT_EQ(text, "");
}

TEST_F(systeminfo_service, an_application_may_come_first)
{
    std::thread application([] {
        unsigned int model = 0;
        EXPECT_EQ(facade().tarn_systeminfo_get_model_type(model), 0U);
        EXPECT_EQ(model, 41U);
    });
    // The application's first check finds nobody.
    usleep(500'000);
    const process service = start_service();
    application.join();
}

TEST_F(systeminfo_service, a_service_that_comes_back_is_used_again)
{
    unsigned int model = 0;
    {
        const process service = start_service();
        EXPECT_EQ(facade().tarn_systeminfo_get_model_type(model), 0U);
        EXPECT_EQ(model, 41U);
    }
    facade().tarn_systeminfo_get_model_type(model);
    EXPECT_EQ(model, 0U) << "nobody answers";
    const process service = start_service();
    facade().tarn_systeminfo_get_model_type(model);
    EXPECT_EQ(model, 41U);
}

TEST_F(systeminfo_service, a_call_fails_when_the_service_dies_under_it)
{
    process service = start_service();
    unsigned int model = 0;
    facade().tarn_systeminfo_get_model_type(model);
    ASSERT_EQ(model, 41U);

    service.halt();
    unsigned int under_way = 77;
    std::thread caller([&under_way] { facade().tarn_systeminfo_get_model_type(under_way); });
    usleep(100'000);
    service.stop(SIGKILL);
    caller.join();
    EXPECT_EQ(under_way, 0U) << "an unanswered call leaves zero";

    service = start_service();
    facade().tarn_systeminfo_get_model_type(model);
    EXPECT_EQ(model, 41U);
}

TEST_F(systeminfo_service, a_call_gives_up_at_its_time_limit)
{
    setenv("TARN_CALL_TIMEOUT_MS", "300", 1);
    process service = start_service();
    unsigned int model = 0;
    facade().tarn_systeminfo_get_model_type(model);
    ASSERT_EQ(model, 41U);

    service.halt();
    const auto start = std::chrono::steady_clock::now();
    facade().tarn_systeminfo_get_model_type(model);
    const auto took = std::chrono::steady_clock::now() - start;
    EXPECT_EQ(model, 0U);
    EXPECT_GE(took, std::chrono::milliseconds(290));
    EXPECT_LT(took, std::chrono::seconds(10));

    service.signal(SIGCONT);
    EXPECT_TRUE(eventually([&model] {
        facade().tarn_systeminfo_get_model_type(model);
        return model == 41;
    }));
}

TEST_F(systeminfo_service, changes_are_saved_on_request)
{
    const auto saved = directory() / "saved.json";
    {
        process service = start_service({}, {"--save", saved});
        facade().tarn_systeminfo_set_value(sleep_minutes, 99U);
        EXPECT_EQ(service.stop(SIGTERM), 0);
    }
    const process service = start_service(saved);
    unsigned int number = 0;
    EXPECT_EQ(facade().tarn_systeminfo_get_value(sleep_minutes, number), 0U);
    EXPECT_EQ(number, 99U);
}

TEST_F(systeminfo_service, a_second_service_is_refused)
{
    const process service = start_service();
    std::string output;
    EXPECT_EQ(run("tarnsim", {TARN_EXAMPLE_DEVICE}, output), 1);
    EXPECT_NE(output.find("another process already serves TARN_SRV in " + directory().string()), std::string::npos)
        << output;
}

TEST_F(systeminfo_service, a_wrong_device_file_is_explained)
{
    const std::vector<std::pair<std::string, std::string>> wrong = {
        {"{\n  \"systeminfo\": {\n    \"model_type\": \"many\"\n  }\n}",
         ":3: /systeminfo/model_type: expected a 32-bit number"},
        {"{\n  \"systeminfo\": {\n    \"values\": [\n      { \"key\": 1 }\n    ]\n  }\n}",
         ":4: /systeminfo/values/0: expected a member \"value\""},
        {"{\n  \"errors\": { \"no_such_error\": 1 }\n}", ":2: /errors/no_such_error: expected the name of an error"},
        {"{\n\n  \"systeminfo\": [ }", ":3: is no JSON"},
        {"[]", ":1: the file: expected an object"},
    };
    for (const auto& [content, message] : wrong) {
        const auto file = write_file("wrong.json", content);
        std::string output;
        EXPECT_EQ(run("tarnsim", {file}, output), 1);
        EXPECT_NE(output.find(file.string() + message), std::string::npos) << output;
    }
    std::string output;
    EXPECT_EQ(run("tarnsim", {"no-such-file.json"}, output), 1);
    EXPECT_NE(output.find("no-such-file.json: cannot be read"), std::string::npos) << output;
}

}  // namespace
