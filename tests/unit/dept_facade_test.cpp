#include "tarn_dept_facade.h"

#include "protocol/dept.h"
#include "unit/facade_test.h"

namespace {

using namespace testing_platform;
using norvane::tarn_dept_facade;

namespace wire = norvane::protocol::dept;

class dept_facade : public facade_test<tarn_dept_facade> {
protected:
    dept_facade() : facade_test(&tarn_dept_facade::tarn_dept_get_instance) {}
};

const creation_row creation{7, 0x04010801, 219, "core_src/tarn_dept_facade", false};

TEST_F(dept_facade, waits_for_its_service) { exercise_initialization(facade(), creation); }

TEST_F(dept_facade, is_published_when_the_service_never_comes)
{
    exercise_unreached<tarn_dept_facade>(
        &tarn_dept_facade::tarn_dept_get_instance, creation,
        [](tarn_dept_facade& facade) { return facade.tarn_dept_delete_all_hide_dept(); });
}

TEST_F(dept_facade, is_made_once_by_many_threads) { exercise_creation_race(&tarn_dept_facade::tarn_dept_get_instance); }

TEST_F(dept_facade, makes_its_creation_lock_once_under_the_process_lock)
{
    facade();
    facade();
    EXPECT_EQ(platform().thread_guards, 1);
    EXPECT_EQ(platform().events.size(), 2U) << "one lock and one unlock: the second call takes no lock";
}

TEST_F(dept_facade, dispatch_does_nothing)
{
    char message[80] = {};
    facade().dispatch(0, message, sizeof message, {});
    EXPECT_TRUE(platform().requests.empty());
    EXPECT_TRUE(platform().reports.empty());
}

/// An operation whose only argument is a department code, with codes around the bound of 9 bytes.
void exercise_code(long func_id, const std::function<unsigned int(const std::string& code)>& call)
{
    for (const std::size_t length : {0U, 1U, 8U, 9U, 10U, 12U, 13U, 600U}) {
        SCOPED_TRACE(length);
        const std::string code = record(length).pattern(0, length).bytes();
        exercise({7, func_id, record(84).text(72, code.substr(0, 9)), record(16), 12}, [&] { return call(code); });
    }
}

/// An operation that sends a department.
void exercise_department(long func_id, const std::function<unsigned int(const TARN_DEPT_DEPTINFO& department)>& call)
{
    const auto department = patterned<TARN_DEPT_DEPTINFO>(4);
    exercise({7, func_id, record(552).pattern(72, 480, 4), record(16), 12}, [&] { return call(department); });
}

/// An operation that sets a mode.
template <typename Mode>
void exercise_set(long func_id, const std::function<unsigned int(Mode mode)>& call)
{
    exercise({7, func_id, record(76).u32(72, 0xF1E2D3C4), record(16), 12},
             [&] { return call(static_cast<Mode>(0xF1E2D3C4)); });
}

/// An operation that reads a mode.
template <typename Mode>
void exercise_get(long func_id, const std::function<unsigned int(Mode& mode)>& call)
{
    auto mode = static_cast<Mode>(0);
    exercise(
        {7, func_id, record(72), record(20).u32(12, 0xF5E6D7C8), 16},
        [&] {
            mode = static_cast<Mode>(0x55);
            return call(mode);
        },
        [&] { EXPECT_EQ(mode, 0xF5E6D7C8U); }, [&] { EXPECT_EQ(mode, 0U); });
}

TEST_F(dept_facade, create_hide_dept)
{
    exercise_code(0, [&](const std::string& code) { return facade().tarn_dept_create_hide_dept(code); });
}

TEST_F(dept_facade, a_code_ends_at_its_first_nul)
{
    exercise({7, 0, record(84).text(72, "12"), record(16), 12}, [&] {
        return facade().tarn_dept_create_hide_dept(
            std::string("12\0"
                        "34",
                        5));
    });
}

TEST_F(dept_facade, add_hide_dept)
{
    exercise_department(
        1, [&](const TARN_DEPT_DEPTINFO& department) { return facade().tarn_dept_add_hide_dept(department); });
}

TEST_F(dept_facade, update_hide_dept)
{
    exercise_department(
        2, [&](const TARN_DEPT_DEPTINFO& department) { return facade().tarn_dept_update_hide_dept(department); });
}

TEST_F(dept_facade, delete_hide_dept)
{
    exercise_code(3, [&](const std::string& code) { return facade().tarn_dept_delete_hide_dept(code); });
}

TEST_F(dept_facade, delete_all_hide_dept)
{
    exercise({7, 4, record(72), record(16), 12}, [&] { return facade().tarn_dept_delete_all_hide_dept(); });
}

TEST_F(dept_facade, retrieve_hide_dept)
{
    for (const std::size_t length : {0U, 8U, 9U, 10U, 600U}) {
        SCOPED_TRACE(length);
        const std::string code = record(length).pattern(0, length).bytes();
        TARN_DEPT_DEPTINFO department;
        exercise(
            {7, 5, record(84).text(72, code.substr(0, 9)), record(496).pattern(12, 480, 3), 492},
            [&] {
                department = patterned<TARN_DEPT_DEPTINFO>(2);
                return facade().tarn_dept_retrieve_hide_dept(code, department);
            },
            [&] { EXPECT_EQ(bytes_of(department), record(480).pattern(0, 480, 3).bytes()); },
            [&] { EXPECT_EQ(bytes_of(department), record(480).bytes()); });
    }
}

TEST_F(dept_facade, reset_hide_dept_counter)
{
    exercise_code(6, [&](const std::string& code) { return facade().tarn_dept_reset_hide_dept_counter(code); });
}

TEST_F(dept_facade, set_dept_mode)
{
    exercise_set<TARN_DEPT_DEPT_MODE>(7,
                                      [&](TARN_DEPT_DEPT_MODE mode) { return facade().tarn_dept_set_dept_mode(mode); });
}

TEST_F(dept_facade, get_dept_mode)
{
    exercise_get<TARN_DEPT_DEPT_MODE>(
        8, [&](TARN_DEPT_DEPT_MODE& mode) { return facade().tarn_dept_get_dept_mode(mode); });
}

TEST_F(dept_facade, set_mix_mode)
{
    exercise_set<TARN_DEPT_MIX_MODE>(9, [&](TARN_DEPT_MIX_MODE mode) { return facade().tarn_dept_set_mix_mode(mode); });
}

TEST_F(dept_facade, get_mix_mode)
{
    exercise_get<TARN_DEPT_MIX_MODE>(10,
                                     [&](TARN_DEPT_MIX_MODE& mode) { return facade().tarn_dept_get_mix_mode(mode); });
}

TEST_F(dept_facade, set_invalid_dept_mode)
{
    exercise_set<TARN_DEPT_INVALID_DEPT_MODE>(
        11, [&](TARN_DEPT_INVALID_DEPT_MODE mode) { return facade().tarn_dept_set_invalid_dept_mode(mode); });
}

TEST_F(dept_facade, get_invalid_dept_mode)
{
    exercise_get<TARN_DEPT_INVALID_DEPT_MODE>(
        12, [&](TARN_DEPT_INVALID_DEPT_MODE& mode) { return facade().tarn_dept_get_invalid_dept_mode(mode); });
}

TEST_F(dept_facade, set_limit_action_mode)
{
    exercise_set<TARN_DEPT_LIMIT_ACTION>(
        13, [&](TARN_DEPT_LIMIT_ACTION action) { return facade().tarn_dept_set_limit_action_mode(action); });
}

TEST_F(dept_facade, get_limit_action_mode)
{
    exercise_get<TARN_DEPT_LIMIT_ACTION>(
        14, [&](TARN_DEPT_LIMIT_ACTION& action) { return facade().tarn_dept_get_limit_action_mode(action); });
}

TEST_F(dept_facade, rows_are_called_by_their_operations)
{
    EXPECT_EQ(numbers_and_names<wire::operations>(),
              (std::vector<std::pair<long, std::string>>{{0, "tarn_dept_create_hide_dept"},
                                                         {1, "tarn_dept_add_hide_dept"},
                                                         {2, "tarn_dept_update_hide_dept"},
                                                         {3, "tarn_dept_delete_hide_dept"},
                                                         {4, "tarn_dept_delete_all_hide_dept"},
                                                         {5, "tarn_dept_retrieve_hide_dept"},
                                                         {6, "tarn_dept_reset_hide_dept_counter"},
                                                         {7, "tarn_dept_set_dept_mode"},
                                                         {8, "tarn_dept_get_dept_mode"},
                                                         {9, "tarn_dept_set_mix_mode"},
                                                         {10, "tarn_dept_get_mix_mode"},
                                                         {11, "tarn_dept_set_invalid_dept_mode"},
                                                         {12, "tarn_dept_get_invalid_dept_mode"},
                                                         {13, "tarn_dept_set_limit_action_mode"},
                                                         {14, "tarn_dept_get_limit_action_mode"}}));
    EXPECT_TRUE(numbers_and_names<wire::notifications>().empty());
}

TEST_F(dept_facade, fields_have_their_width_and_type_for_those_who_read_them)
{
    EXPECT_EQ((wire::create_hide_dept::request::field<"code">::width), 12U);
    EXPECT_EQ((wire::delete_hide_dept::request::field<"code">::width), 12U);
    EXPECT_EQ((wire::retrieve_hide_dept::request::field<"code">::width), 12U);
    EXPECT_EQ((wire::reset_hide_dept_counter::request::field<"code">::width), 12U);
    EXPECT_EQ((wire::add_hide_dept::request::field<"department">::type), "TARN_DEPT_DEPTINFO");
    EXPECT_EQ((wire::update_hide_dept::request::field<"department">::type), "TARN_DEPT_DEPTINFO");
    EXPECT_EQ((wire::retrieve_hide_dept::reply::field<"department">::type), "TARN_DEPT_DEPTINFO");
}

}  // namespace
