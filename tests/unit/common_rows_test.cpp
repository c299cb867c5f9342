#include "protocol/common.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace {

namespace wire = norvane::protocol::common;

using numbered_names = std::vector<std::pair<long, std::string>>;

template <typename Rows>
numbered_names listed()
{
    numbered_names all;
    Rows::each([&all]<typename Row>() {
        EXPECT_EQ(Row::interface_id, 1);
        all.emplace_back(Row::id, Row::name);
    });
    std::sort(all.begin(), all.end());
    return all;
}

TEST(common_rows, operations_are_named_after_the_facades)
{
    EXPECT_EQ(listed<wire::operations>(),
              (numbered_names{{0, "tarn_common_add_observer"},
                              {1, "tarn_common_remove_observer"},
                              {2, "tarn_common_service_state_changed"},
                              {3, "tarn_common_network_state_changed"},
                              {4, "tarn_common_request_activate"},
                              {9, "tarn_check_eweb_cert_info"},
                              {10, "tarn_get_personal_address_list_prepare"},
                              {11, "tarn_get_personal_address_list"},
                              {12, "tarn_get_personal_address_list_finish"},
                              {13, "tarn_get_group_address_list_prepare"},
                              {14, "tarn_get_group_address_list"},
                              {15, "tarn_get_group_address_list_finish"},
                              {16, "tarn_get_group_member_address_list_prepare"},
                              {17, "tarn_get_group_member_address_list_grp_mem_str_prepare"},
                              {18, "tarn_get_group_member_address_list"},
                              {19, "tarn_get_group_member_address_list"},
                              {20, "tarn_get_group_member_address_list_finish"},
                              {21, "tarn_search_personal_address_list_prepare"},
                              {22, "tarn_search_personal_address_list_prepare"},
                              {23, "tarn_search_personal_address_list"},
                              {24, "tarn_search_personal_address_list_finish"},
                              {25, "tarn_search_group_address_list_prepare"},
                              {26, "tarn_search_group_address_list_prepare"},
                              {27, "tarn_search_group_address_list"},
                              {28, "tarn_search_group_address_list_finish"},
                              {29, "tarn_request_energy_saving_mode"},
                              {38, "tarn_add_box"},
                              {39, "tarn_update_box_info"},
                              {40, "tarn_get_box_detail_info"},
                              {41, "tarn_delete_box"},
                              {42, "tarn_delete_document"},
                              {43, "tarn_delete_easy_document"},
                              {44, "tarn_get_box_available_capacity"},
                              {45, "tarn_get_box_info_prepare"},
                              {46, "tarn_get_box_list_info"},
                              {47, "tarn_get_box_info_finish"},
                              {47, "tarn_get_document_info_finish"},
                              {47, "tarn_get_easy_box_info_finish"},
                              {48, "tarn_get_document_info_prepare"},
                              {49, "tarn_get_document_info"},
                              {50, "tarn_get_easy_box_info_prepare"},
                              {51, "tarn_get_easy_box_info"},
                              {52, "tarn_request_save_mode_prohibition"},
                              {53, "tarn_suspend_deep_sleep"},
                              {54, "tarn_resume_deep_sleep"},
                              {55, "tarn_set_wakeup_date"},
                              {56, "tarn_get_wakeup_date"},
                              {57, "tarn_check_allowed_to_be_deep_sleep_mode"},
                              {58, "tarn_request_all_resident_apps_to_change_state"},
                              {61, "tarn_get_fax_box_list_prepare"},
                              {62, "tarn_get_fax_box_list"},
                              {63, "tarn_get_fax_box_list_finish"},
                              {64, "tarn_get_fax_box_detail_info"},
                              {65, "tarn_add_fax_box"},
                              {66, "tarn_update_fax_box_info"},
                              {67, "tarn_delete_fax_box"},
                              {68, "tarn_get_fax_document_list_prepare"},
                              {69, "tarn_get_fax_document_list"},
                              {70, "tarn_get_fax_document_list_finish"},
                              {71, "tarn_delete_fax_document"},
                              {72, "tarn_get_job_retention_doc_list_prepare"},
                              {73, "tarn_get_job_retention_doc_list"},
                              {74, "tarn_get_job_retention_doc_list_finish"},
                              {75, "tarn_get_job_retention_doc_info"},
                              {76, "tarn_delete_job_retention_doc"},
                              {77, "tarn_add_box_bkg"},
                              {78, "tarn_update_box_info_bkg"},
                              {79, "tarn_delete_box_bkg"},
                              {80, "tarn_get_box_info_prepare_bkg"},
                              {81, "tarn_get_document_info_prepare_bkg"},
                              {82, "tarn_delete_document_bkg"},
                              {83, "tarn_get_box_detail_info_bkg"},
                              {84, "tarn_get_box_available_capacity_bkg"},
                              {85, "tarn_check_javavm_status"}}));
}

TEST(common_rows, notifications_are_named_after_the_observers)
{
    EXPECT_EQ(listed<wire::notifications>(), (numbered_names{{2, "service_state_changed"},
                                                             {3, "network_state_changed"},
                                                             {4, "request_activate"},
                                                             {5, "notify_logout"},
                                                             {6, "notify_pbp_connection_error"},
                                                             {7, "notify_sleep"},
                                                             {8, "notify_usb_memory_status"},
                                                             {30, "notify_toner_status"},
                                                             {31, "notify_waste_toner_bottle_status"},
                                                             {32, "notify_paper_rest_status"},
                                                             {33, "notify_cover_status"},
                                                             {34, "notify_dp_cover_status"},
                                                             {35, "notify_jam_status"},
                                                             {36, "notify_dp_jam_status"},
                                                             {37, "notify_coin_vender_status"},
                                                             {58, "notify_resident_app_state_changed"},
                                                             {59, "notify_key_card_status"},
                                                             {60, "notify_key_counter_status"},
                                                             {86, "notify_javavm_get_free_mem"}}));
}

}  // namespace
