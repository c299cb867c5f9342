#include "tarn_webservice_facade.h"

#include "protocol/webservice.h"
#include "unit/facade_test.h"

namespace {

using namespace testing_platform;
using norvane::tarn_webservice_facade;

namespace wire = norvane::protocol::webservice;

class webservice_facade : public facade_test<tarn_webservice_facade> {
protected:
    webservice_facade() : facade_test(&tarn_webservice_facade::tarn_webservice_get_instance) {}
};

const creation_row creation{5, 0x04010606, 436, "core_src/tarn_webservice_facade", true};

TEST_F(webservice_facade, waits_for_its_service) { exercise_initialization(facade(), creation); }

TEST_F(webservice_facade, is_published_when_the_service_never_comes)
{
    exercise_unreached<tarn_webservice_facade>(
        &tarn_webservice_facade::tarn_webservice_get_instance, creation, [](tarn_webservice_facade& facade) {
            return facade.tarn_webservice_reserve(TARN_WEBSERVICE_KIND{}, "scanner");
        });
}

TEST_F(webservice_facade, is_made_once_by_many_threads)
{
    exercise_creation_race(&tarn_webservice_facade::tarn_webservice_get_instance);
}

TEST_F(webservice_facade, makes_its_creation_lock_once_under_the_process_lock)
{
    facade();
    facade();
    EXPECT_EQ(platform().thread_guards, 1);
    EXPECT_EQ(platform().events.size(), 2U) << "one lock and one unlock: the second call takes no lock";
}

TEST_F(webservice_facade, dispatch_does_nothing)
{
    char message[80] = {};
    facade().dispatch(0, message, sizeof message, {});
    EXPECT_TRUE(platform().requests.empty());
    EXPECT_TRUE(platform().reports.empty());
}

constexpr auto kind = static_cast<TARN_WEBSERVICE_KIND>(0x91A2B3C4);
constexpr std::uint32_t kind_word = 0x91A2B3C4;

/// An operation on the web service of a kind, with names around the bound of 127 bytes.
void exercise_name(long func_id, const std::function<unsigned int(const std::string& name)>& call)
{
    for (const std::size_t length : {0U, 1U, 126U, 127U, 128U, 129U, 200U, 5000U}) {
        SCOPED_TRACE(length);
        const std::string name = record(length).pattern(0, length).bytes();
        exercise({5, func_id, record(204).u32(72, kind_word).text(76, name.substr(0, 127)), record(16), 12},
                 [&] { return call(name); });
    }
}

TEST_F(webservice_facade, reserve)
{
    exercise_name(0, [&](const std::string& name) { return facade().tarn_webservice_reserve(kind, name); });
}

TEST_F(webservice_facade, release)
{
    exercise_name(1, [&](const std::string& name) { return facade().tarn_webservice_release(kind, name); });
}

TEST_F(webservice_facade, a_name_ends_at_its_first_nul)
{
    exercise({5, 0, record(204).u32(72, kind_word).text(76, "ab"), record(16), 12}, [&] {
        return facade().tarn_webservice_reserve(kind, std::string("ab\0"
                                                                  "cd",
                                                                  5));
    });
}

TEST_F(webservice_facade, get_certificate)
{
    for (const std::size_t length : {0U, 1U, 17U, 514U, 515U}) {
        SCOPED_TRACE(length);
        const std::string longest = record(length).pattern(0, length).bytes();
        std::string path;
        exercise(
            {5, 2, record(76).u32(72, 0xA1B2C3D4), record(532).text(12, longest), 528},
            [&] {
                path = "before";
                return facade().tarn_webservice_get_certificate(static_cast<TARN_SSL_FILE_TYPE>(0xA1B2C3D4), path);
            },
            [&] { EXPECT_EQ(path, longest); }, [&] { EXPECT_EQ(path, ""); });
    }
}

TEST_F(webservice_facade, a_path_without_terminator_ends_with_the_record)
{
    platform().reply_with(record(532).text(12, std::string(516, 'x')).u32(528, 0x41424344));
    std::string path;
    facade().tarn_webservice_get_certificate(TARN_SSL_FILE_TYPE{}, path);
    EXPECT_EQ(path.size(), 520U);
    EXPECT_EQ(path.substr(0, 516), std::string(516, 'x'));
}

/// The two hdo certificates are fetched with two requests, which share the room for their replies.
class webservice_hdo_certificates : public webservice_facade {
protected:
    unsigned int call()
    {
        first = "before";
        second = "before";
        return facade().tarn_webservice_get_hdo_certificate_filepath(first, second);
    }

    /// Two requests, for the certificates 10 and 11, each with this much room for its reply.
    static void expect_requests(unsigned int first_room, unsigned int second_room)
    {
        const auto& sent = platform().requests;
        ASSERT_EQ(sent.size(), 2U);
        expect_request(sent[0], {5, 2, record(76).u32(72, 10), record(first_room), 528});
        expect_request(sent[1], {5, 2, record(76).u32(72, 11), record(second_room), 528});
    }

    static void expect_trace()
    {
        EXPECT_EQ(
            platform().traces,
            (std::vector<trace_line>{{0x401, 0x102, 0, "%s[%04d]::%s,%s\n",
                                      "core_src/tarn_webservice_facade[0526]::"
                                      "tarn_webservice_get_hdo_certificate_filepath,[Exit] Not Java Process\n"}}));
        EXPECT_TRUE(platform().reports.empty());
    }

    std::string first;
    std::string second;
};

TEST_F(webservice_hdo_certificates, are_fetched_one_after_the_other)
{
    platform().reply_next(record(532).text(12, "/certs/a.pem"));
    platform().reply_next(record(532).text(12, "/certs/second.pem"));
    EXPECT_EQ(call(), 0U);
    expect_requests(532, 532);
    expect_trace();
    EXPECT_EQ(first, "/certs/a.pem");
    EXPECT_EQ(second, "/certs/second.pem");
}

TEST_F(webservice_hdo_certificates, are_traced_before_the_first_request)
{
    std::vector<std::size_t> lines_before;
    platform().respond([&](const request&, char*, unsigned int&) {
        lines_before.push_back(platform().traces.size());
        return 0L;
    });
    call();
    EXPECT_EQ(lines_before, (std::vector<std::size_t>{1, 1}));
}

TEST_F(webservice_hdo_certificates, have_the_result_of_the_second_request)
{
    platform().reply_next(record(532).text(12, "/certs/a.pem").u32(528, 0x0BADF00D));
    platform().reply_next(record(532).text(12, "/certs/b.pem").u32(528, 0));
    EXPECT_EQ(call(), 0U) << "a failure of the first does not show";
    EXPECT_EQ(first, "/certs/a.pem");
    EXPECT_EQ(second, "/certs/b.pem");

    platform().reply_next(record(532).text(12, "/certs/a.pem").u32(528, 0));
    platform().reply_next(record(532).text(12, "/certs/b.pem").u32(528, 0x8BADF00D));
    EXPECT_EQ(call(), 0x8BADF00DU);
    EXPECT_EQ(first, "/certs/a.pem");
    EXPECT_EQ(second, "/certs/b.pem");
}

TEST_F(webservice_hdo_certificates, share_the_length_of_the_reply)
{
    platform().reply_next(record(64).text(12, "/certs/a.pem"));
    platform().reply_next(record(64).text(12, "/certs/b.pem"));
    EXPECT_EQ(call(), 0U);
    expect_requests(532, 64);
    EXPECT_EQ(second, "/certs/b.pem");
}

TEST_F(webservice_hdo_certificates, share_the_bytes_of_the_reply)
{
    platform().reply_next(record(532).text(12, "/certs/a/long/path.pem").u32(528, 0x0BADF00D));
    // Shorter than the first: text and terminator only, or not even that.
    platform().reply_next(record(12 + 7).text(12, "/b.pem"));
    EXPECT_EQ(call(), 0x0BADF00DU) << "the second reply ended before the result";
    EXPECT_EQ(second, "/b.pem");

    platform().reply_next(record(532).text(12, "/certs/a/long/path.pem"));
    platform().reply_next(record(12 + 6).text(12, "/CERTS"));
    EXPECT_EQ(call(), 0U);
    EXPECT_EQ(first, "/certs/a/long/path.pem");
    EXPECT_EQ(second, "/CERTS/a/long/path.pem");
}

TEST_F(webservice_hdo_certificates, are_the_same_when_the_second_request_is_not_answered)
{
    platform().reply_next(record(532).text(12, "/certs/a.pem").u32(528, 0x0BADF00D));
    platform().reply_never();
    EXPECT_EQ(call(), 0x0BADF00DU);
    expect_requests(532, 532);
    EXPECT_EQ(first, "/certs/a.pem");
    EXPECT_EQ(second, "/certs/a.pem");
}

TEST_F(webservice_hdo_certificates, are_empty_when_nobody_answers)
{
    platform().reply_never();
    EXPECT_EQ(call(), 0U);
    expect_requests(532, 532);
    expect_trace();
    EXPECT_EQ(first, "");
    EXPECT_EQ(second, "");
}

TEST_F(webservice_hdo_certificates, are_traced_but_not_asked_for_without_a_client)
{
    platform().refused_checks = 200;
    facade();
    platform().reports.clear();
    EXPECT_EQ(call(), 0U);
    EXPECT_TRUE(platform().requests.empty());
    expect_trace();
    EXPECT_EQ(first, "");
    EXPECT_EQ(second, "");
}

TEST_F(webservice_facade, rows_are_called_by_their_operations)
{
    EXPECT_EQ(
        numbers_and_names<wire::operations>(),
        (std::vector<std::pair<long, std::string>>{
            {0, "tarn_webservice_reserve"}, {1, "tarn_webservice_release"}, {2, "tarn_webservice_get_certificate"}}));
    EXPECT_TRUE(numbers_and_names<wire::notifications>().empty());
}

TEST_F(webservice_facade, fields_have_their_width_for_those_who_read_them)
{
    EXPECT_EQ((wire::reserve::request::field<"name">::width), 128U);
    EXPECT_EQ((wire::release::request::field<"name">::width), 128U);
    EXPECT_EQ((wire::get_certificate::reply::field<"path">::width), 516U);
}

}  // namespace
