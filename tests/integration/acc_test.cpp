// The card reader and the charging accessory against the stand-in service: cards reach observers,
// settings are stored, sessions keep their order, and charging uses up the limit.
#include "tarn_acc_facade.h"
#include "tarn_acc_observer.h"

#include "integration/processes.h"

#include <csignal>
#include <cstring>
#include <mutex>
#include <vector>

namespace {

using namespace testing_processes;
using norvane::tarn_acc_facade;

constexpr unsigned int unknown_key = 0x02000003;
constexpr unsigned int wrong_state = 0x0200000A;
constexpr unsigned int over_limit = 0x0200000F;

tarn_acc_facade& facade() { return *tarn_acc_facade::tarn_acc_get_instance(); }

class card_recorder : public norvane::tarn_acc_observer {
public:
    struct card {
        unsigned int type;
        std::string idm;
    };

    unsigned int notify_iccard_detect(TARN_ACC_ICCARD_INFO& info) override
    {
        const std::lock_guard lock(mutex_);
        const char* const bytes = reinterpret_cast<const char*>(&info);
        card seen{0, bytes + 4};
        std::memcpy(&seen.type, bytes, sizeof seen.type);
        cards_.push_back(seen);
        return 0;
    }
    unsigned int notify_iccard_read_error(int kind) override
    {
        const std::lock_guard lock(mutex_);
        errors_.push_back(kind);
        return 0;
    }
    unsigned int notify_iccard_state_change_info(TARN_ACC_ICCARD_STATE_CHANGE_INFO& state) override
    {
        const std::lock_guard lock(mutex_);
        states_.push_back(state);
        return 0;
    }
    std::vector<card> cards() const
    {
        const std::lock_guard lock(mutex_);
        return cards_;
    }
    std::vector<int> errors() const
    {
        const std::lock_guard lock(mutex_);
        return errors_;
    }
    std::vector<TARN_ACC_ICCARD_STATE_CHANGE_INFO> states() const
    {
        const std::lock_guard lock(mutex_);
        return states_;
    }

private:
    mutable std::mutex mutex_;
    std::vector<card> cards_;
    std::vector<int> errors_;
    std::vector<TARN_ACC_ICCARD_STATE_CHANGE_INFO> states_;
};

class acc_service : public process_test {};

TEST_F(acc_service, a_card_is_held_to_the_reader_once_it_reads_its_type)
{
    const process service = start_service();
    card_recorder observer;
    ASSERT_EQ(facade().tarn_acc_add_observer(&observer), 0U);
    EXPECT_EQ(facade().tarn_acc_set_iccard_read_type(1), 0U) << "no card of this type";
    EXPECT_EQ(facade().tarn_acc_set_iccard_read_type(2), 0U);
    EXPECT_TRUE(eventually([&] { return !observer.cards().empty(); }));
    ASSERT_EQ(observer.cards().size(), 1U);
    EXPECT_EQ(observer.cards()[0].type, 2U);
    EXPECT_EQ(observer.cards()[0].idm, "0114B34D0C1A7F22");
    EXPECT_EQ(facade().tarn_acc_remove_observer(&observer), 0U);
}

TEST_F(acc_service, cards_errors_and_states_from_tarnctl_reach_the_overrides)
{
    const process service = start_service();
    card_recorder observer;
    ASSERT_EQ(facade().tarn_acc_add_observer(&observer), 0U);
    std::string output;
    EXPECT_EQ(run("tarnctl", {"notify", "card", "card_type=5,idm=ABCDEF"}, output), 0);
    EXPECT_NE(output.find("answered, result 0"), std::string::npos) << output;
    EXPECT_EQ(run("tarnctl", {"notify", "card", "00000000414243"}, output), 0);
    ASSERT_EQ(observer.cards().size(), 2U);
    EXPECT_EQ(observer.cards()[0].type, 5U);
    EXPECT_EQ(observer.cards()[0].idm, "ABCDEF");
    EXPECT_EQ(observer.cards()[1].idm, "ABC") << "given as bytes";

    EXPECT_EQ(run("tarnctl", {"notify", "iccard-read-error", "0xFFFFFFFF"}, output), 0);
    EXPECT_EQ(observer.errors(), std::vector<int>{-1});

    EXPECT_EQ(run("tarnctl",
                  {"notify", "iccard-state-change-info", "product_id=258,vendor_id=772,read_type=3,status=9"}, output),
              0);
    ASSERT_EQ(observer.states().size(), 1U);
    EXPECT_EQ(observer.states()[0].product_id, 258);
    EXPECT_EQ(observer.states()[0].vendor_id, 772);
    EXPECT_EQ(observer.states()[0].read_type, 3);
    EXPECT_EQ(observer.states()[0].status, 9);

    EXPECT_EQ(run("tarnctl", {"notify", "card", "colour=5"}, output), 1);
    EXPECT_NE(output.find("expected a field of the layout of TARN_ACC_ICCARD_INFO"), std::string::npos) << output;
    EXPECT_EQ(facade().tarn_acc_remove_observer(&observer), 0U);
}

TEST_F(acc_service, the_reader_describes_itself)
{
    const process service = start_service();
    unsigned int status = 9;
    EXPECT_EQ(facade().tarn_acc_get_rw_status(status), 0U);
    EXPECT_EQ(status, 1U);
    TARN_ACC_ICCARD_DEVICE_INFO info{};
    EXPECT_EQ(facade().tarn_acc_get_iccard_device_info(info), 0U);
    EXPECT_EQ(info.product_id, 258);
    EXPECT_EQ(info.vendor_id, 772);
    EXPECT_EQ(info.card_device_type, 3);
}

TEST_F(acc_service, felica_settings_are_kept_for_each_site)
{
    const auto saved = directory() / "saved.json";
    const auto known = static_cast<TARN_ACC_FELICA_SETTING_SITE>(0);
    const auto other = static_cast<TARN_ACC_FELICA_SETTING_SITE>(5);
    TARN_ACC_FELICA_SETTING_INFO info{};
    {
        process service = start_service({}, {"--save", saved});
        EXPECT_EQ(facade().tarn_acc_get_felica_info(other, info), unknown_key);
        EXPECT_EQ(facade().tarn_acc_get_felica_info(known, info), 0U);
        EXPECT_EQ(info.first_string, "FE00");
        EXPECT_EQ(info.second_string, "8000");
        EXPECT_EQ(info.third_string, "1");
        EXPECT_EQ(info.first_byte, 4);
        EXPECT_EQ(info.second_byte, 16);
        TARN_ACC_FELICA_SETTING_INFO changed{"one", "two", "three", 200, 201};
        EXPECT_EQ(facade().tarn_acc_set_felica_info(other, changed), 0U);
        EXPECT_EQ(facade().tarn_acc_set_felica_read_type(static_cast<TARN_ACC_TYPE_C_READ_TYPE>(3)), 0U);
        EXPECT_EQ(service.stop(SIGTERM), 0);
    }
    EXPECT_NE(read_file(saved).find("\"felica_read_type\": 3"), std::string::npos);
    const process service = start_service(saved);
    EXPECT_EQ(facade().tarn_acc_get_felica_info(other, info), 0U);
    EXPECT_EQ(info.first_string, "one");
    EXPECT_EQ(info.second_string, "two");
    EXPECT_EQ(info.third_string, "three");
    EXPECT_EQ(info.first_byte, 200);
    EXPECT_EQ(info.second_byte, 201);
    EXPECT_EQ(facade().tarn_acc_get_felica_info(known, info), 0U);
    EXPECT_EQ(info.first_string, "FE00");
}

TEST_F(acc_service, a_send_session_keeps_its_order)
{
    const process service = start_service();
    unsigned char condition[] = "duplex";
    EXPECT_EQ(facade().tarn_acc_change_condition(condition, 2), wrong_state) << "no session";
    facade().tarn_acc_send_start();
    EXPECT_EQ(facade().tarn_acc_change_condition(condition, 2), wrong_state) << "started, but not prepared";
    EXPECT_EQ(facade().tarn_acc_send_start_prepare(), 0U);
    EXPECT_EQ(facade().tarn_acc_change_condition(condition, 2), wrong_state) << "prepared, but not started";
    facade().tarn_acc_send_start();
    EXPECT_EQ(facade().tarn_acc_change_condition(condition, 2), 0U);
    facade().tarn_acc_send_start_prepare();
    facade().tarn_acc_send_end_finish();
    EXPECT_EQ(facade().tarn_acc_change_condition(condition, 3), 0U) << "neither may come in the middle";
    facade().tarn_acc_send_end();
    EXPECT_EQ(facade().tarn_acc_change_condition(condition, 4), wrong_state) << "ended";
    facade().tarn_acc_send_start_prepare();
    facade().tarn_acc_send_start();
    EXPECT_EQ(facade().tarn_acc_change_condition(condition, 4), wrong_state) << "ended, but not finished";
    EXPECT_EQ(facade().tarn_acc_send_end_finish(), 0U);
    facade().tarn_acc_send_start_prepare();
    facade().tarn_acc_send_start();
    EXPECT_EQ(facade().tarn_acc_change_condition(condition, 5), 0U) << "a second session";
}

TEST_F(acc_service, charging_uses_up_the_limit)
{
    const process service = start_service();
    EXPECT_EQ(facade().tarn_acc_get_price_limit(), 100U);
    EXPECT_EQ(facade().tarn_acc_charge_price(), 0U);
    EXPECT_EQ(facade().tarn_acc_get_price_limit(), 70U);
    EXPECT_EQ(facade().tarn_acc_charge_price(), 0U);
    EXPECT_EQ(facade().tarn_acc_charge_price(), 0U);
    EXPECT_EQ(facade().tarn_acc_get_price_limit(), 10U);
    EXPECT_EQ(facade().tarn_acc_charge_price(), over_limit);
    EXPECT_EQ(facade().tarn_acc_get_price_limit(), 10U);
}

}  // namespace
