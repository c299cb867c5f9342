#include "tarn_user_facade.h"

#include "protocol/user.h"
#include "unit/facade_test.h"

namespace {

using namespace testing_platform;
using norvane::tarn_user_facade;

namespace wire = norvane::protocol::user;

class user_facade : public facade_test<tarn_user_facade> {
protected:
    user_facade() : facade_test(&tarn_user_facade::tarn_user_get_instance) {}
};

const creation_row creation{3, 0x04010404, 1730, "core_src/tarn_user_facade", true};

constexpr std::uint32_t word = 0xA1B2C3D4;
constexpr auto authmode = static_cast<TARN_USER_AUTHMODE>(word);
constexpr auto mode_10 = static_cast<TARN_MODE_10_VAL>(word);
/// Only the low half is left of it on the wire.
const auto cert = static_cast<unsigned long>(0x12345678A1B2C3D4ULL);

/// What a null output of `operation` is reported as.
std::vector<report> null_output(const std::string& operation, int line)
{
    return {{0xF694, 0, 0, "core_src/tarn_user_facade", operation, line}};
}

/// Texts shorter than `limit`, of its length and longer, that differ from one `seed` to the next.
std::vector<std::string> texts_around(std::size_t limit, unsigned int seed)
{
    std::vector<std::string> texts;
    for (const std::size_t length : {std::size_t{0}, std::size_t{1}, limit - 1, limit, limit + 1, std::size_t{1000}}) {
        texts.push_back(record(length).pattern(0, length, seed).bytes());
    }
    return texts;
}

/// A call of which a 32-bit value comes back at offset 12, with the result at 16.
template <typename Value>
void exercise_value(long func_id, const record& request, const std::function<unsigned int(Value*)>& call)
{
    auto value = static_cast<Value>(0x55);
    exercise(
        {3, func_id, request, record(20).u32(12, 0xCAFEF00D), 16},
        [&] {
            value = static_cast<Value>(0x55);
            return call(&value);
        },
        [&] { EXPECT_EQ(value, static_cast<Value>(0xCAFEF00D)); }, [&] { EXPECT_EQ(value, static_cast<Value>(0)); });
}

TEST_F(user_facade, waits_for_its_service) { exercise_initialization(facade(), creation); }

TEST_F(user_facade, is_published_when_the_service_never_comes)
{
    exercise_unreached<tarn_user_facade>(&tarn_user_facade::tarn_user_get_instance, creation,
                                         [](tarn_user_facade& facade) { return facade.tarn_user_logout(1); });
}

TEST_F(user_facade, is_made_once_by_many_threads) { exercise_creation_race(&tarn_user_facade::tarn_user_get_instance); }

TEST_F(user_facade, makes_its_creation_lock_once_under_the_process_lock)
{
    facade();
    facade();
    EXPECT_EQ(platform().thread_guards, 1);
    EXPECT_EQ(platform().events.size(), 2U) << "one lock and one unlock: the second call takes no lock";
}

TEST_F(user_facade, dispatch_does_nothing)
{
    char message[80] = {};
    facade().dispatch(0, message, sizeof message, {});
    EXPECT_TRUE(platform().requests.empty());
    EXPECT_TRUE(platform().reports.empty());
}

TEST_F(user_facade, starts_without_a_partition)
{
    EXPECT_EQ(facade().part_id_, nullptr);
    EXPECT_EQ(facade().mem_flag_, 0U);
    EXPECT_TRUE(platform().partitions().empty());
}

TEST_F(user_facade, account_login)
{
    exercise_value<unsigned long>(0, record(336).text(72, "operator").text(201, "sesame").u32(332, word),
                                  [&](unsigned long* cert_id) {
                                      return facade().tarn_user_account_login("operator", "sesame", authmode, cert_id);
                                  });
}

TEST_F(user_facade, account_login_cuts_name_and_password_at_129)
{
    for (const auto& user : texts_around(129, 1)) {
        for (const auto& password : texts_around(129, 2)) {
            SCOPED_TRACE(std::to_string(user.size()) + "/" + std::to_string(password.size()));
            exercise_value<unsigned long>(
                0, record(336).text(72, user.substr(0, 129)).text(201, password.substr(0, 129)).u32(332, word),
                [&](unsigned long* cert_id) {
                    return facade().tarn_user_account_login(user, password, authmode, cert_id);
                });
        }
    }
}

TEST_F(user_facade, account_login_needs_a_cert_id)
{
    exercise_refused_argument([&] { return facade().tarn_user_account_login("operator", "sesame", authmode, nullptr); },
                              0x04010403, null_output("tarn_user_account_login", 601));
}

TEST_F(user_facade, account_login_with_extra)
{
    exercise_value<unsigned long>(
        1, record(596).text(72, "operator").text(201, "sesame").u32(332, word).text(336, "domain"),
        [&](unsigned long* cert_id) {
            return facade().tarn_user_account_login("operator", "sesame", authmode, "domain", cert_id);
        });
}

TEST_F(user_facade, account_login_with_extra_cuts_its_texts)
{
    for (const auto& extra : texts_around(257, 3)) {
        for (const auto& user : texts_around(129, 1)) {
            const auto password = record(user.size()).pattern(0, user.size(), 2).bytes();
            SCOPED_TRACE(std::to_string(user.size()) + "/" + std::to_string(extra.size()));
            exercise_value<unsigned long>(1,
                                          record(596)
                                              .text(72, user.substr(0, 129))
                                              .text(201, password.substr(0, 129))
                                              .u32(332, word)
                                              .text(336, extra.substr(0, 257)),
                                          [&](unsigned long* cert_id) {
                                              return facade().tarn_user_account_login(user, password, authmode, extra,
                                                                                      cert_id);
                                          });
        }
    }
}

TEST_F(user_facade, account_login_with_extra_needs_a_cert_id)
{
    exercise_refused_argument(
        [&] { return facade().tarn_user_account_login("operator", "sesame", authmode, "domain", nullptr); }, 0x04010403,
        null_output("tarn_user_account_login", 686));
}

TEST_F(user_facade, logout)
{
    exercise({3, 2, record(76).u32(72, word), record(16), 12}, [&] { return facade().tarn_user_logout(cert); });
}

TEST_F(user_facade, get_userinfo)
{
    static TARN_USERINFO_RECORD info;
    exercise(
        {3, 3, record(76).u32(72, word), record(952).pattern(12, 936, 3), 948},
        [&] {
            info = patterned<TARN_USERINFO_RECORD>(2);
            return facade().tarn_user_get_userinfo(static_cast<TARN_USER_USERKIND>(word), info);
        },
        [&] { EXPECT_EQ(bytes_of(info), record(936).pattern(0, 936, 3).bytes()); },
        [&] { EXPECT_EQ(bytes_of(info), record(936).bytes()); });
}

TEST_F(user_facade, get_rights)
{
    exercise_value<TARN_USER_RIGHTS>(
        4, record(332).text(72, "operator").text(201, "sesame"),
        [&](TARN_USER_RIGHTS* rights) { return facade().tarn_user_get_rights("operator", "sesame", rights); });
}

TEST_F(user_facade, get_rights_cuts_name_and_password_at_129)
{
    for (const auto& user : texts_around(129, 1)) {
        for (const auto& password : texts_around(129, 2)) {
            SCOPED_TRACE(std::to_string(user.size()) + "/" + std::to_string(password.size()));
            exercise_value<TARN_USER_RIGHTS>(
                4, record(332).text(72, user.substr(0, 129)).text(201, password.substr(0, 129)),
                [&](TARN_USER_RIGHTS* rights) { return facade().tarn_user_get_rights(user, password, rights); });
        }
    }
}

TEST_F(user_facade, get_rights_needs_rights)
{
    exercise_refused_argument([&] { return facade().tarn_user_get_rights("operator", "sesame", nullptr); }, 0x04010403,
                              null_output("tarn_user_get_rights", 921));
}

TEST_F(user_facade, get_authentication_mode)
{
    exercise_value<TARN_USER_AUTHMODE>(
        5, record(72), [&](TARN_USER_AUTHMODE* mode) { return facade().tarn_user_get_authentication_mode(mode); });
}

TEST_F(user_facade, get_authentication_mode_needs_a_mode)
{
    exercise_refused_argument([&] { return facade().tarn_user_get_authentication_mode(nullptr); }, 0x04010403,
                              null_output("tarn_user_get_authentication_mode", 1078));
}

TEST_F(user_facade, set_authentication_mode)
{
    exercise({3, 6, record(76).u32(72, word), record(16), 12},
             [&] { return facade().tarn_user_set_authentication_mode(authmode); });
}

TEST_F(user_facade, create_hide_account)
{
    const auto account = patterned<TARN_HIDE_USERINFO_RECORD>();
    exercise({3, 7, record(680).pattern(72, 608), record(16), 12},
             [&] { return facade().tarn_user_create_hide_account(account); });
}

TEST_F(user_facade, update_hide_account)
{
    const auto account = patterned<TARN_HIDE_USERINFO_RECORD>(4);
    exercise({3, 8, record(680).pattern(72, 608, 4), record(16), 12},
             [&] { return facade().tarn_user_update_hide_account(account); });
}

TEST_F(user_facade, delete_hide_account)
{
    for (const auto& user : texts_around(129, 1)) {
        SCOPED_TRACE(user.size());
        exercise({3, 9, record(204).text(72, user.substr(0, 129)), record(16), 12},
                 [&] { return facade().tarn_user_delete_hide_account(user); });
    }
}

TEST_F(user_facade, delete_all_hide_account)
{
    exercise({3, 10, record(72), record(16), 12}, [&] { return facade().tarn_user_delete_all_hide_account(); });
}

TEST_F(user_facade, idm_login)
{
    for (auto idm : texts_around(65, 1)) {
        SCOPED_TRACE(idm.size());
        exercise_value<unsigned long>(11, record(140).text(72, idm.substr(0, 65)), [&](unsigned long* cert_id) {
            return facade().tarn_user_idm_login(idm.data(), cert_id);
        });
    }
}

TEST_F(user_facade, get_rights_with_extra)
{
    exercise_value<TARN_USER_RIGHTS>(12, record(588).text(72, "operator").text(201, "sesame").text(330, "domain"),
                                     [&](TARN_USER_RIGHTS* rights) {
                                         return facade().tarn_user_get_rights("operator", "sesame", "domain", rights);
                                     });
}

TEST_F(user_facade, get_rights_with_extra_cuts_its_texts)
{
    for (const auto& extra : texts_around(257, 3)) {
        for (const auto& user : texts_around(129, 1)) {
            const auto password = record(user.size()).pattern(0, user.size(), 2).bytes();
            SCOPED_TRACE(std::to_string(user.size()) + "/" + std::to_string(extra.size()));
            exercise_value<TARN_USER_RIGHTS>(
                12,
                record(588)
                    .text(72, user.substr(0, 129))
                    .text(201, password.substr(0, 129))
                    .text(330, extra.substr(0, 257)),
                [&](TARN_USER_RIGHTS* rights) { return facade().tarn_user_get_rights(user, password, extra, rights); });
        }
    }
}

TEST_F(user_facade, get_rights_with_extra_needs_rights)
{
    exercise_refused_argument([&] { return facade().tarn_user_get_rights("operator", "sesame", "domain", nullptr); },
                              0x04010403, null_output("tarn_user_get_rights", 1002));
}

TEST_F(user_facade, set_func_auth_mode)
{
    exercise({3, 16, record(76).u32(72, word), record(16), 12},
             [&] { return facade().tarn_user_set_func_auth_mode(mode_10); });
}

TEST_F(user_facade, logout_limit)
{
    exercise({3, 17, record(76).u32(72, word), record(16), 12},
             [&] { return facade().tarn_user_logout_limit(mode_10); });
}

TEST_F(user_facade, logout_bkg)
{
    exercise({3, 18, record(76).u32(72, word), record(16), 12}, [&] { return facade().tarn_user_logout_bkg(cert); });
}

TEST_F(user_facade, rows_are_called_by_their_operations)
{
    EXPECT_EQ(numbers_and_names<wire::operations>(),
              (std::vector<std::pair<long, std::string>>{{0, "tarn_user_account_login"},
                                                         {1, "tarn_user_account_login"},
                                                         {2, "tarn_user_logout"},
                                                         {3, "tarn_user_get_userinfo"},
                                                         {4, "tarn_user_get_rights"},
                                                         {5, "tarn_user_get_authentication_mode"},
                                                         {6, "tarn_user_set_authentication_mode"},
                                                         {7, "tarn_user_create_hide_account"},
                                                         {8, "tarn_user_update_hide_account"},
                                                         {9, "tarn_user_delete_hide_account"},
                                                         {10, "tarn_user_delete_all_hide_account"},
                                                         {11, "tarn_user_idm_login"},
                                                         {12, "tarn_user_get_rights"},
                                                         {13, "tarn_user_get_local_user_list_prepare"},
                                                         {14, "tarn_user_get_local_user_list"},
                                                         {15, "tarn_user_get_local_user_list_finish"},
                                                         {16, "tarn_user_set_func_auth_mode"},
                                                         {17, "tarn_user_logout_limit"},
                                                         {18, "tarn_user_logout_bkg"}}));
    EXPECT_TRUE(numbers_and_names<wire::notifications>().empty());
}

TEST_F(user_facade, whoever_watches_learns_no_password)
{
    EXPECT_TRUE((wire::account_login::request::field<"password">::is_secret));
    EXPECT_TRUE((wire::account_login_extra::request::field<"password">::is_secret));
    EXPECT_TRUE((wire::get_rights::request::field<"password">::is_secret));
    EXPECT_TRUE((wire::get_rights_extra::request::field<"password">::is_secret));
    EXPECT_TRUE((wire::idm_login::request::field<"idm">::is_secret));
    EXPECT_TRUE((wire::create_hide_account::request::field<"account">::is_secret));
    EXPECT_TRUE((wire::update_hide_account::request::field<"account">::is_secret));
}

}  // namespace
