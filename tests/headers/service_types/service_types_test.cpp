// An application that has the service's own record definitions, with the library that does not.
#include "tarn_dept_facade.h"
#include "tarn_systeminfo_facade.h"

#include "unit/recording_platform.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

using namespace testing_platform;

TEST(service_types, a_record_that_came_is_read_by_its_fields)
{
    platform().reset();
    platform().reply_with(
        record(496).text(12, "1001").text(12 + 12, "Accounting").u32(12 + 76, 5000).u32(12 + 80, 412).u32(492, 0));
    TARN_DEPT_DEPTINFO department{};
    auto* const dept = norvane::tarn_dept_facade::tarn_dept_get_instance();
    EXPECT_EQ(dept->tarn_dept_retrieve_hide_dept("1001", department), 0U);
    EXPECT_STREQ(department.code, "1001");
    EXPECT_STREQ(department.name, "Accounting");
    EXPECT_EQ(department.print_limit, 5000U);
    EXPECT_EQ(department.printed, 412U);
}

TEST(service_types, a_record_that_is_sent_is_written_by_its_fields)
{
    platform().reset();
    platform().reply_with(record(16).u32(12, 9));
    TARN_DEPT_DEPTINFO department{};
    std::strcpy(department.code, "2002");
    department.print_limit = 77;
    auto* const dept = norvane::tarn_dept_facade::tarn_dept_get_instance();
    EXPECT_EQ(dept->tarn_dept_update_hide_dept(department), 9U);
    ASSERT_EQ(platform().requests.size(), 1U);
    EXPECT_EQ(platform().requests.front().bytes, record(552).text(72, "2002").u32(72 + 76, 77).bytes());
}

TEST(service_types, fields_that_the_library_reads_go_by_their_places)
{
    platform().reset();
    platform().reply_with(record(20).u32(12, 183204));
    TARN_COUNT_INFO which{};
    which.counter = 0x0102;
    which.detail = 3;
    unsigned long count = 0;
    auto* const systeminfo = norvane::tarn_systeminfo_facade::tarn_systeminfo_get_instance();
    EXPECT_EQ(systeminfo->tarn_systeminfo_get_count(which, count), 0U);
    EXPECT_EQ(count, 183204U);
    ASSERT_EQ(platform().requests.size(), 1U);
    EXPECT_EQ(platform().requests.front().bytes, record(76).u16(72, 0x0102).u8(74, 3).bytes());
}

}  // namespace
