#include "protocol/job.h"

#include "unit/facade_test.h"

#include <string>
#include <utility>
#include <vector>

namespace {

using namespace testing_platform;

namespace wire = norvane::protocol::job;

using numbered_names = std::vector<std::pair<long, std::string>>;

TEST(job_rows, operations_are_named_after_the_facade)
{
    EXPECT_EQ(numbers_and_names<wire::operations>(),
              (numbered_names{{0, "tarn_job_add_observer"},
                              {1, "tarn_job_remove_observer"},
                              {6, "tarn_job_generate_jobinfo"},
                              {7, "tarn_job_delete_jobinfo"},
                              {8, "tarn_job_start"},
                              {9, "tarn_job_cancel"},
                              {10, "tarn_job_continuous_read"},
                              {11, "tarn_job_continuous_read_end"},
                              {12, "tarn_job_get_value"},
                              {13, "tarn_job_get_value"},
                              {14, "tarn_job_get_value"},
                              {15, "tarn_job_set_value"},
                              {16, "tarn_job_set_value"},
                              {17, "tarn_job_set_value"},
                              {18, "tarn_job_set_state_of_prohibition"},
                              {19, "tarn_job_copy_jobinfo"},
                              {20, "tarn_job_rollback_jobinfo"},
                              {21, "tarn_job_commit_jobinfo"},
                              {22, "tarn_job_get_disable_info"},
                              {23, "tarn_job_get_start_phb"},
                              {24, "tarn_job_get_main_message"},
                              {25, "tarn_job_check_state_of_prohibition"},
                              {31, "tarn_job_kick"},
                              {32, "tarn_job_notify_energy_saving_mode"},
                              {33, "tarn_job_add_address"},
                              {34, "tarn_job_update_address"},
                              {35, "tarn_job_delete_address"},
                              {36, "tarn_job_delete_all_address"},
                              {37, "tarn_job_get_address"},
                              {38, "tarn_job_get_address_id"},
                              {39, "tarn_job_reset_jobinfo"},
                              {40, "tarn_job_get_job_list"},
                              {41, "tarn_job_get_default_jobinfo_val"},
                              {42, "tarn_job_box_job_prepare"},
                              {43, "tarn_job_retrieve_document_prepare"},
                              {44, "tarn_job_combine_document"},
                              {45, "tarn_job_direct_print_prepare"},
                              {48, "tarn_job_basic_func_set_value"},
                              {49, "tarn_job_get_scan_data"},
                              {50, "tarn_job_notify_timeout"},
                              {51, "tarn_job_direct_print_prepare"},
                              {52, "tarn_job_write_stream_data"},
                              {53, "tarn_job_get_ocr_text_data"},
                              {54, "tarn_job_generate_jobinfo_bkg"},
                              {55, "tarn_job_cancel_bkg"},
                              {56, "tarn_job_notify_logout_bkg"},
                              {57, "tarn_job_check_app_stop_permission_to_change_state"},
                              {58, "tarn_job_notify_finish_app_state_change_judgement"}}));
}

TEST(job_rows, notifications_are_named_after_the_observer)
{
    EXPECT_EQ(numbers_and_names<wire::notifications>(), (numbered_names{{26, "notify_job_state_changed"},
                                                                        {27, "notify_scan_count"},
                                                                        {28, "notify_start_phb"},
                                                                        {29, "notify_disable_info"},
                                                                        {30, "notify_main_message"},
                                                                        {46, "notify_phb_info"},
                                                                        {47, "notify_message_info"}}));
}

}  // namespace
