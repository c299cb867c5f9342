#include "tarn_systeminfo_facade.h"

#include "unit/facade_test.h"

#include <limits>

namespace {

using namespace testing_platform;
using norvane::tarn_systeminfo_facade;

class systeminfo_facade : public facade_test<tarn_systeminfo_facade> {
protected:
    systeminfo_facade() : facade_test(&tarn_systeminfo_facade::tarn_systeminfo_get_instance) {}
};

const creation_row creation{4, 0x04010502, 650, "core_src/tarn_systeminfo_facade", true};

constexpr auto key = static_cast<TARN_ENTKEY>(0x01020304);
constexpr std::uint32_t key_word = 0x01020304;
constexpr unsigned long selector = 0xA0B0C0D0;

TEST_F(systeminfo_facade, waits_for_its_service) { exercise_initialization(facade(), creation); }

TEST_F(systeminfo_facade, is_published_when_the_service_never_comes)
{
    exercise_unreached<tarn_systeminfo_facade>(
        &tarn_systeminfo_facade::tarn_systeminfo_get_instance, creation,
        [](tarn_systeminfo_facade& facade) { return facade.tarn_systeminfo_set_value(key, 1U); });
}

TEST_F(systeminfo_facade, is_made_once_by_many_threads)
{
    exercise_creation_race(&tarn_systeminfo_facade::tarn_systeminfo_get_instance);
}

TEST_F(systeminfo_facade, makes_its_creation_lock_once_under_the_process_lock)
{
    facade();
    facade();
    EXPECT_EQ(platform().thread_guards, 1);
    EXPECT_EQ(platform().events.size(), 2U) << "one lock and one unlock: the second call takes no lock";
}

TEST_F(systeminfo_facade, dispatch_does_nothing)
{
    char message[80] = {};
    facade().dispatch(0, message, sizeof message, {});
    EXPECT_TRUE(platform().requests.empty());
    EXPECT_TRUE(platform().reports.empty());
}

TEST_F(systeminfo_facade, get_value_number)
{
    unsigned int value = 0;
    exercise(
        {4, 0, record(80).u32(72, key_word), record(20).u32(12, 0xCAFEF00D), 16},
        [&] {
            value = 0x55;
            return facade().tarn_systeminfo_get_value(key, value);
        },
        [&] { EXPECT_EQ(value, 0xCAFEF00DU); }, [&] { EXPECT_EQ(value, 0U); });
}

TEST_F(systeminfo_facade, get_value_text)
{
    std::string text;
    exercise(
        {4, 1, record(1104).u32(72, key_word), record(1044).text(12, "4th floor"), 1040},
        [&] {
            text = "before";
            return facade().tarn_systeminfo_get_value(key, text);
        },
        [&] { EXPECT_EQ(text, "4th floor"); }, [&] { EXPECT_EQ(text, ""); });
}

TEST_F(systeminfo_facade, get_value_text_of_full_length)
{
    const std::string longest(1027, 'x');
    platform().reply_with(record(1044).text(12, longest));
    std::string text;
    EXPECT_EQ(facade().tarn_systeminfo_get_value(key, text), 0U);
    EXPECT_EQ(text, longest);
}

TEST_F(systeminfo_facade, get_value_text_without_terminator_ends_with_the_record)
{
    platform().reply_with(record(1044).text(12, std::string(1028, 'x')).u32(1040, 0x41424344));
    std::string text;
    facade().tarn_systeminfo_get_value(key, text);
    EXPECT_EQ(text.size(), 1032U);
    EXPECT_EQ(text.substr(0, 1028), std::string(1028, 'x'));
}

TEST_F(systeminfo_facade, set_value_number)
{
    exercise({4, 2, record(80).u32(72, key_word).u32(76, 0x0A0B0C0D), record(16), 12},
             [&] { return facade().tarn_systeminfo_set_value(key, 0x0A0B0C0DU); });
}

TEST_F(systeminfo_facade, set_value_text)
{
    exercise({4, 3, record(1104).u32(72, key_word).text(76, "mailroom"), record(16), 12},
             [&] { return facade().tarn_systeminfo_set_value(key, std::string("mailroom")); });
}

TEST_F(systeminfo_facade, set_value_text_is_cut_at_1025)
{
    for (const std::size_t length : {0U, 1024U, 1025U, 1026U, 1028U, 5000U}) {
        SCOPED_TRACE(length);
        const std::string text = record(length).pattern(0, length).bytes();
        exercise({4, 3, record(1104).u32(72, key_word).text(76, text.substr(0, 1025)), record(16), 12},
                 [&] { return facade().tarn_systeminfo_set_value(key, text); });
    }
}

TEST_F(systeminfo_facade, get_paper_info)
{
    auto paper = patterned<TARN_PAPER_INFO>();
    exercise(
        {4, 4, record(76).u32(72, key_word), record(20).pattern(12, 4, 3), 16},
        [&] {
            paper = patterned<TARN_PAPER_INFO>(2);
            return facade().tarn_systeminfo_get_paper_info(key, paper);
        },
        [&] { EXPECT_EQ(bytes_of(paper), record(4).pattern(0, 4, 3).bytes()); },
        [&] { EXPECT_EQ(bytes_of(paper), record(4).bytes()); });
}

TEST_F(systeminfo_facade, get_count)
{
    TARN_COUNT_INFO which{0x1234, 0x56};
    unsigned long count = 0;
    exercise(
        {4, 5, record(76).u16(72, 0x1234).u8(74, 0x56), record(20).u32(12, 0xFEDCBA98), 16},
        [&] {
            count = std::numeric_limits<unsigned long>::max();
            return facade().tarn_systeminfo_get_count(which, count);
        },
        [&] { EXPECT_EQ(count, 0xFEDCBA98UL); }, [&] { EXPECT_EQ(count, 0UL); });
    EXPECT_EQ(which.kind, 0x1234);
    EXPECT_EQ(which.detail, 0x56);
}

TEST_F(systeminfo_facade, get_machine_info_number)
{
    unsigned int value = 0;
    exercise(
        {4, 6, record(80).u32(72, key_word).u32(76, 0xA0B0C0D0), record(20).u32(12, 77), 16},
        [&] {
            value = 5;
            return facade().tarn_systeminfo_get_machine_info(key, selector, value);
        },
        [&] { EXPECT_EQ(value, 77U); }, [&] { EXPECT_EQ(value, 0U); });
}

TEST_F(systeminfo_facade, set_machine_info_number)
{
    exercise({4, 7, record(84).u32(72, key_word).u32(76, 0xA0B0C0D0).u32(80, 99), record(16), 12},
             [&] { return facade().tarn_systeminfo_set_machine_info(key, selector, 99); });
}

TEST_F(systeminfo_facade, get_machine_info_text)
{
    std::string text;
    exercise(
        {4, 8, record(80).u32(72, key_word).u32(76, 0xA0B0C0D0), record(1044).text(12, "SN-0042"), 1040},
        [&] {
            text = "before";
            return facade().tarn_systeminfo_get_machine_info(key, selector, text);
        },
        [&] { EXPECT_EQ(text, "SN-0042"); }, [&] { EXPECT_EQ(text, ""); });
}

TEST_F(systeminfo_facade, get_screen_size)
{
    unsigned int size = 0;
    exercise(
        {4, 9, record(72), record(20).u32(12, 3), 16},
        [&] {
            size = 9;
            return facade().tarn_systeminfo_get_screen_size(size);
        },
        [&] { EXPECT_EQ(size, 3U); }, [&] { EXPECT_EQ(size, 0U); });
}

TEST_F(systeminfo_facade, get_model_type)
{
    unsigned int model = 0;
    exercise(
        {4, 10, record(72), record(20).u32(12, 0x80000001), 16},
        [&] {
            model = 9;
            return facade().tarn_systeminfo_get_model_type(model);
        },
        [&] { EXPECT_EQ(model, 0x80000001U); }, [&] { EXPECT_EQ(model, 0U); });
}

TEST_F(systeminfo_facade, get_fax_encryption_validity)
{
    unsigned char validity = 0;
    exercise(
        {4, 11, record(76).u32(72, key_word), record(20).u8(12, 0xE1).u8(13, 2).u8(14, 3).u8(15, 4), 16},
        [&] {
            validity = 9;
            return facade().tarn_systeminfo_get_fax_encryption_validity(key, validity);
        },
        [&] { EXPECT_EQ(validity, 0xE1); }, [&] { EXPECT_EQ(validity, 0); });
}

TEST_F(systeminfo_facade, get_machine_info_number_bkg)
{
    unsigned int value = 0;
    exercise(
        {4, 12, record(80).u32(72, key_word).u32(76, 0xA0B0C0D0), record(20).u32(12, 78), 16},
        [&] {
            value = 5;
            return facade().tarn_systeminfo_get_machine_info_bkg(key, selector, value);
        },
        [&] { EXPECT_EQ(value, 78U); }, [&] { EXPECT_EQ(value, 0U); });
}

TEST_F(systeminfo_facade, get_machine_info_text_bkg)
{
    std::string text;
    exercise(
        {4, 13, record(80).u32(72, key_word).u32(76, 0xA0B0C0D0), record(1044).text(12, "SN-0043"), 1040},
        [&] {
            text = "before";
            return facade().tarn_systeminfo_get_machine_info_bkg(key, selector, text);
        },
        [&] { EXPECT_EQ(text, "SN-0043"); }, [&] { EXPECT_EQ(text, ""); });
}

TEST_F(systeminfo_facade, set_machine_info_number_bkg)
{
    exercise({4, 14, record(84).u32(72, key_word).u32(76, 0xA0B0C0D0).u32(80, 98), record(16), 12},
             [&] { return facade().tarn_systeminfo_set_machine_info_bkg(key, selector, 98); });
}

}  // namespace
