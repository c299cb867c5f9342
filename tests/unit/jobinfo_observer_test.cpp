#include "tarn_jobinfo_observer.h"

#include "unit/observer_test.h"

// What the service's own headers would define.
struct TARN_EVENT_JOB_UPDATE_LOG {
    unsigned int words[2];
};
struct TARN_EVENT_PRINT_PAGE {
    unsigned int words[2];
};
struct TARN_EVENT_SCAN_PAGE {
    unsigned int words[2];
};
struct TARN_EVENT_SEND_PAGE {
    unsigned int words[2];
};

namespace {

using namespace testing_platform;
using norvane::tarn_jobinfo_observer;

class jobinfo_observer : public platform_test {};

const failure_row failures{
    .source = "core_src/tarn_jobinfo_observer",
    .class_name = "tarn_jobinfo_observer",
    .constructed_without_server = {0xF696, 72},
    .constructed_without_name = {0xF694, 100},
    .empty_buffer = {},
    .no_server = {0xF696, 176},
    .unknown_id = {0xF696, 259},
    .detail_names_unknown_id = false,
};

struct listener : listening<tarn_jobinfo_observer> {
    using listening::listening;

    /// Where the record or the text stood.
    const void* record_at = nullptr;
    const char* text_at = nullptr;

    unsigned int notify_job_update_log(TARN_EVENT_JOB_UPDATE_LOG const& log) override
    {
        return note_record("notify_job_update_log", log);
    }
    unsigned int notify_print_page_info(TARN_EVENT_PRINT_PAGE const& page) override
    {
        return note_record("notify_print_page_info", page);
    }
    unsigned int notify_scan_page_info(TARN_EVENT_SCAN_PAGE const& page) override
    {
        return note_record("notify_scan_page_info", page);
    }
    unsigned int notify_fax_send_page_info(TARN_EVENT_SEND_PAGE const& page) override
    {
        return note_record("notify_fax_send_page_info", page);
    }
    unsigned int notify_renint_start_info(TARN_EVENT_RENINT_START const& start, char const* text) override
    {
        record_at = &start;
        text_at = text;
        return note("notify_renint_start_info", start.bytes[0], start.bytes[15], text);
    }
    unsigned int notify_imagelog_create_status(unsigned int id, unsigned long imagelog,
                                               TARN_IMAGELOG_CREATE_STATUS_VAL status) override
    {
        return note("notify_imagelog_create_status", id, imagelog, status);
    }

private:
    template <typename Record>
    unsigned int note_record(const char* operation, const Record& received)
    {
        record_at = &received;
        return note(operation, received.words[0], received.words[1]);
    }
};

const std::vector<long> known{11, 12, 13, 14, 15, 16};

void exercise_row(const notification_row& row)
{
    exercise_notification<listener>(row);
    exercise_default<tarn_jobinfo_observer>(row);
}

/// A record of which two words are looked at.
record two_words() { return record(200).u32(72, 0xA1B2C3D4).u32(76, 7); }

TEST_F(jobinfo_observer, takes_a_name_from_the_platform)
{
    exercise_default_constructor<tarn_jobinfo_observer>(failures);
}

TEST_F(jobinfo_observer, keeps_the_name_it_is_given) { exercise_named_constructor<tarn_jobinfo_observer>(failures); }

TEST_F(jobinfo_observer, has_an_identity_until_it_is_destroyed) { exercise_identity<tarn_jobinfo_observer>(); }

TEST_F(jobinfo_observer, turns_down_what_it_cannot_handle) { exercise_refusals<listener>(failures, known); }

TEST_F(jobinfo_observer, job_update_log) { exercise_row({11, two_words(), "notify_job_update_log(2712847316, 7)"}); }

TEST_F(jobinfo_observer, print_page_info) { exercise_row({12, two_words(), "notify_print_page_info(2712847316, 7)"}); }

TEST_F(jobinfo_observer, scan_page_info) { exercise_row({13, two_words(), "notify_scan_page_info(2712847316, 7)"}); }

TEST_F(jobinfo_observer, fax_send_page_info)
{
    exercise_row({14, two_words(), "notify_fax_send_page_info(2712847316, 7)"});
}

TEST_F(jobinfo_observer, renint_start_info)
{
    const record start = record(200).u8(72, 0xE1).u8(87, 0xF2);
    exercise_row({15, record(start).text(88, "renint text"), "notify_renint_start_info(225, 242, renint text)"});
    exercise_row({15, record(start), "notify_renint_start_info(225, 242, )"});
}

TEST_F(jobinfo_observer, imagelog_create_status)
{
    exercise_row({16, record(84).u32(72, 0xFFFFFFFF).u32(76, 0xFEDCBA98).u32(80, 0x80000003),
                  "notify_imagelog_create_status(4294967295, 4275878552, 2147483651)"});
}

TEST_F(jobinfo_observer, hands_records_over_where_they_stand)
{
    char name[] = "TARN_OBS0000042";
    alignas(8) char buffer[4096] = {};
    for (const long func_id : {11L, 12L, 13L, 14L, 15L}) {
        SCOPED_TRACE(func_id);
        listener observer(42, name);
        observer.dispatch(func_id, buffer, 88, {});
        EXPECT_EQ(observer.record_at, buffer + 72);
        EXPECT_EQ(observer.text_at, func_id == 15 ? buffer + 88 : nullptr)
            << "a text that is empty is not null, not even behind the received length";
    }
}

}  // namespace
