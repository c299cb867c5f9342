#include "tarn_job_observer.h"

#include "unit/observer_test.h"

/// The service's record, of which the library knows nothing.
struct TARN_PHB_INFO {
    unsigned char bytes[40];
};

namespace {

using namespace testing_platform;
using norvane::tarn_job_observer;

class job_observer : public platform_test {};

// An unknown id is reported as a server that is not there.
const failure_row failures{"core_src/tarn_job_observer",
                           "tarn_job_observer",
                           {0xF696, 85},
                           {0xF694, 117},
                           {},
                           {0xF696, 192},
                           {0xF696, 286},
                           false};

class listener : public listening<tarn_job_observer> {
public:
    using listening::listening;

    /// The record that came last, its bytes and where it stood.
    std::string bytes;
    const void* address = nullptr;

    unsigned int notify_job_state_changed(TARN_JOB_STATE state) override
    {
        const unsigned char first = state.bytes[0];
        const unsigned char last = state.bytes[295];
        keep(state);
        return note("job_state", first, last);
    }
    unsigned int notify_scan_count(unsigned int a, unsigned int b) override { return note("scan_count", a, b); }
    unsigned int notify_start_phb(unsigned int value) override { return note("start_phb", value); }
    unsigned int notify_disable_info(unsigned int value) override { return note("disable_info", value); }
    unsigned int notify_main_message(unsigned int value) override { return note("main_message", value); }
    unsigned int notify_phb_info(unsigned int value, TARN_PHB_INFO& info) override
    {
        keep(info);
        return note("phb_info", value);
    }
    unsigned int notify_message_info(unsigned int value, TARN_PHB_GET_MESSAGE& message) override
    {
        keep(message);
        return note("message_info", value);
    }

private:
    /// Keeps a record's bytes, and writes over them.
    template <typename Record>
    void keep(Record& record)
    {
        bytes = bytes_of(record);
        address = &record;
        record = patterned<Record>(9);
    }
};

constexpr const char* word_value = "(2712847316)";

/// A word at offset 72. The bytes behind it are no field's.
record word_event() { return record(88).u32(72, 0xA1B2C3D4).pattern(76, 12); }

std::vector<notification_row> table()
{
    return {
        {26, record(380).pattern(72, 308, 2), "job_state(63, 89)"},
        {27, record(88).u32(72, 0x01020304).u32(76, 0xF0000001).pattern(80, 8), "scan_count(16909060, 4026531841)"},
        {28, word_event(), std::string("start_phb") + word_value},
        {29, word_event(), std::string("disable_info") + word_value},
        {30, word_event(), std::string("main_message") + word_value},
        {46, record(116).u32(72, 0xA1B2C3D4).pattern(76, 40, 3), std::string("phb_info") + word_value},
        {47, record(364).u32(72, 0xA1B2C3D4).pattern(76, 288, 4), std::string("message_info") + word_value},
    };
}

TEST_F(job_observer, takes_a_name_from_the_platform) { exercise_default_constructor<tarn_job_observer>(failures); }

TEST_F(job_observer, keeps_the_name_that_it_is_given) { exercise_named_constructor<tarn_job_observer>(failures); }

TEST_F(job_observer, has_an_identity_until_it_is_destroyed) { exercise_identity<tarn_job_observer>(); }

TEST_F(job_observer, calls_the_override_of_each_notification)
{
    for (const auto& row : table()) exercise_notification<listener>(row);
}

TEST_F(job_observer, answers_zero_where_nothing_is_overridden)
{
    for (const auto& row : table()) exercise_default<tarn_job_observer>(row);
}

TEST_F(job_observer, refuses_what_it_cannot_deliver)
{
    exercise_refusals<listener>(failures, {26, 27, 28, 29, 30, 46, 47});
}

/// A buffer as the platform hands it over.
class buffer {
public:
    explicit buffer(const record& event) : bytes_(4096) { event.bytes().copy(bytes_.data(), bytes_.size()); }

    char* at(std::size_t offset) { return bytes_.data() + offset; }
    [[nodiscard]] std::string bytes() const { return {bytes_.begin(), bytes_.end()}; }

private:
    std::vector<char> bytes_;
};

TEST_F(job_observer, hands_over_a_copy_of_a_job_s_state)
{
    static_assert(sizeof(TARN_JOB_STATE) == 296);
    listener observer;
    buffer received(record(380).pattern(72, 308, 2));
    const std::string before = received.bytes();
    observer.dispatch(26, received.at(0), 380, {});
    EXPECT_EQ(observer.bytes, before.substr(72, 296));
    EXPECT_EQ(received.bytes(), before) << "what the override wrote is lost";
}

TEST_F(job_observer, copies_a_whole_state_from_a_short_record)
{
    listener observer;
    buffer received(record(368).pattern(72, 296, 2));
    observer.dispatch(26, received.at(0), 73, {});
    EXPECT_EQ(observer.bytes, record(296).pattern(0, 296, 2).bytes());
    EXPECT_EQ(platform().answers.size(), 1U);
}

TEST_F(job_observer, hands_over_phb_information_where_it_stands)
{
    listener observer;
    buffer received(record(116).u32(72, 5).pattern(76, 40, 3));
    observer.dispatch(46, received.at(0), 116, {});
    EXPECT_EQ(observer.address, received.at(76));
    EXPECT_EQ(observer.bytes, record(40).pattern(0, 40, 3).bytes());
    EXPECT_EQ(received.bytes().substr(76, 40), record(40).pattern(0, 40, 9).bytes());
}

TEST_F(job_observer, hands_over_message_information_where_it_stands)
{
    listener observer;
    buffer received(record(364).u32(72, 5).pattern(76, 288, 4));
    observer.dispatch(47, received.at(0), 364, {});
    EXPECT_EQ(observer.address, received.at(76));
    EXPECT_EQ(observer.bytes, record(288).pattern(0, 288, 4).bytes());
    EXPECT_EQ(received.bytes().substr(76, 288), record(288).pattern(0, 288, 9).bytes());
}

TEST_F(job_observer, is_looked_up_under_all_of_a_name_of_16_characters)
{
    char name[] = "SIXTEEN_LONG_OBSERVER";
    listener observer(1, name);
    buffer received(word_event());
    observer.dispatch(28, received.at(0), 88, {});
    EXPECT_EQ(platform().server_lookups, std::vector<std::string>{"SIXTEEN_LONG_OBS"});
}

}  // namespace
