// Jobs: creating, setting, starting and cancelling them, their destinations, and the data that goes in
// and out of them.
#pragma once

#include "platform/bmc_mc.h"
#include "platform/emw_osw.h"
#include "tarn_types.h"

#include <string>
#include <vector>

namespace norvane {

class tarn_job_observer;

/// The application's handle on the service's job interface.
///
/// Every operation is one synchronous request: it blocks until the service has answered and returns
/// the service's result, 0 for success, unless its description says otherwise. Outputs are written
/// from the reply whatever the result; when no reply arrives the result is 0 and the outputs are 0 or
/// empty, so check an output's plausibility where an unreachable service matters. A job is named by the
/// id that the service gave it. Numbers travel as 32 bits; of a wider argument the low 32 bits are
/// sent. An argument called `arg` is the service's own and is passed on as it is.
///
/// Any number of threads may call at the same time. Two locks order some of the calls:
///
/// - the *job lock* makes the operations that change a job wait for one another, reply included;
/// - the *data lock* makes the operations that move a job's data wait for one another, and keeps a
///   partition from being created or deleted meanwhile.
///
/// An operation holds a lock only where its description says so. Neither cancelling nor reading a setting
/// ever waits for another call. `tarn_job_delete_jobinfo` takes the job lock, then the data lock; no
/// operation takes them the other way round.
///
/// Scanned data, recognised text and print data do not travel in requests but through shared memory that
/// the facade sets up when the job is made, so the order of calls matters. Scanning:
///
///     auto* const jobs = tarn_job_facade::tarn_job_get_instance();
///     const auto scan = static_cast<TARN_JOB_PHB_CATEGORY>(8);
///     unsigned int job = 0;
///     if (jobs->tarn_job_generate_jobinfo(scan, job) != 0) return;
///     jobs->tarn_job_set_value(job, resolution, 300U);
///     unsigned int started = 0;
///     if (jobs->tarn_job_start(category, arg, started) == 0) {
///         TARN_JOB_GET_SCAN_DATA data;
///         while (jobs->tarn_job_get_scan_data(job, data) == 0 && use(data)) {}
///     }
///     jobs->tarn_job_delete_jobinfo(job);  // in any case: it releases the shared memory
///
/// Printing a file's data directly:
///
///     if (jobs->tarn_job_direct_print_prepare(job, file) == 0) {
///         TARN_JOB_WRITE_STREAM_DATA data;
///         while (fill(data) && jobs->tarn_job_write_stream_data(job, data) == 0) {}
///     }
///     jobs->tarn_job_delete_jobinfo(job);
///
/// Each kind of data has one piece of shared memory in the process, which all jobs share: do not make a
/// job with data while another thread deletes one.
class TARN_PUBLIC tarn_job_facade : public facade_template {
public:
    /// The one facade of this process. The first call creates it and waits for the service, asking up
    /// to 200 times with `emwOSWSleep(300)` after each refusal; the facade is returned even if the
    /// service never came up, and its requests then go unanswered. Later calls return at once.
    static tarn_job_facade* tarn_job_get_instance();

    /// Deletes no partition: they live until the service releases them or the process ends.
    ~tarn_job_facade() override;

    /// Does nothing: notifications reach the observers, not the facade.
    long dispatch(long func_id, char* rcv_buf, unsigned int rcv_buf_len, gen_ipc_msghdr hdr) override;

    /// Creates the client and waits for the service. `tarn_job_get_instance` calls it once on the new
    /// facade; applications have no use for it. Returns 0, or 0x04010007 when the service was not there
    /// after 200 checks.
    unsigned int initialize_facade(tarn_job_facade* facade);

    // Notifications

    /// Asks the service to notify `obs` until it is removed. The service knows an observer by its address,
    /// and reaches it under the first 15 bytes of its connection name. For a null observer nothing is
    /// sent, the misuse is reported, and the result is 0x04010008.
    unsigned int tarn_job_add_observer(tarn_job_observer* obs);
    /// Asks the service not to notify `obs` any more. Call it before the observer is destroyed. For a
    /// null observer nothing is sent, the misuse is reported, and the result is 0x04010008.
    unsigned int tarn_job_remove_observer(tarn_job_observer* obs);

    // A job's life

    /// Asks the service for a new job record of the category, and gives its id. For category 8 (scan)
    /// this makes the shared memory of the scanned data ready, for category 7 (scan with OCR) also that
    /// of the recognised text; what is there already is used again.
    ///
    /// Returns the service's result if that is not 0; 0x04010001 when the shared memory could not be
    /// made ready, and then `job` names a record that the service keeps until it is deleted. A second
    /// call may succeed. Holds no lock but, for a moment, the data lock.
    unsigned int tarn_job_generate_jobinfo(TARN_JOB_PHB_CATEGORY category, unsigned int& job);
    /// `tarn_job_generate_jobinfo` for a background job.
    unsigned int tarn_job_generate_jobinfo_bkg(TARN_JOB_PHB_CATEGORY category, unsigned long arg, unsigned int& job);
    /// Asks the service to delete the job's record. Where the service says that it has released the memory
    /// of the job's kind, even along with an error, the shared memory of that kind is deleted: that of
    /// scanned data and recognised text together, or that of print data.
    ///
    /// Returns 0 if any shared memory was deleted, else the service's result. Holds the job lock, and the
    /// data lock for each deletion.
    unsigned int tarn_job_delete_jobinfo(unsigned int job);
    /// Keeps a copy of the job's record, for `tarn_job_rollback_jobinfo`.
    unsigned int tarn_job_copy_jobinfo(unsigned int job);
    /// Takes the job's record back to what was copied.
    unsigned int tarn_job_rollback_jobinfo(unsigned int job);
    /// Makes the changes of the job's record since it was copied final.
    unsigned int tarn_job_commit_jobinfo(unsigned int job);
    /// Sets the job's record back to what it was made with. Holds the job lock.
    unsigned int tarn_job_reset_jobinfo(unsigned int job);

    /// Starts a job of the category and gives its id. Holds the job lock.
    unsigned int tarn_job_start(TARN_JOB_CATEGORY category, unsigned int arg, unsigned int& job);
    /// Gets a job that waits going. Holds the job lock.
    unsigned int tarn_job_kick(unsigned int job);
    /// Cancels the job. Waits for no other call.
    unsigned int tarn_job_cancel(unsigned int job, unsigned long arg);
    /// `tarn_job_cancel` for background work. Waits for no other call.
    unsigned int tarn_job_cancel_bkg(unsigned int job, unsigned long arg);
    /// Goes on to read the next originals into the job.
    unsigned int tarn_job_continuous_read(unsigned int job);
    /// Says that no more originals follow.
    unsigned int tarn_job_continuous_read_end(unsigned int job);
    /// Tells the service that the application's wait for the job has timed out.
    unsigned int tarn_job_notify_timeout(unsigned int job);
    /// Adds the ids of the jobs of this kind, 210 at most, to the end of `ids`, even if the result is an
    /// error.
    unsigned int tarn_job_get_job_list(TARN_JOB_KIND kind, std::vector<unsigned int>& ids);

    // Settings

    /// Reads a setting of the job, a number.
    unsigned int tarn_job_get_value(unsigned int job, TARN_JOB_SETTING s, unsigned int& v);
    /// Reads a setting of the job, a text of at most 1499 bytes.
    unsigned int tarn_job_get_value(unsigned int job, TARN_JOB_SETTING s, std::string& v);
    /// Reads a phone-book setting of the job, three numbers.
    unsigned int tarn_job_get_value(unsigned int job, TARN_PHB_SETTING_ID id, unsigned int& a, unsigned int& b,
                                    unsigned int& c);
    /// Changes a setting of the job, a number. Holds the job lock.
    unsigned int tarn_job_set_value(unsigned int job, TARN_JOB_SETTING s, unsigned int v);
    /// Changes a setting of the job, a text. Of a longer text the first 1499 bytes are sent. Holds the
    /// job lock.
    unsigned int tarn_job_set_value(unsigned int job, TARN_JOB_SETTING s, std::string v);
    /// Changes a phone-book setting of the job, three numbers. Holds the job lock.
    unsigned int tarn_job_set_value(unsigned int job, TARN_PHB_SETTING_ID id, unsigned int a, unsigned int b,
                                    unsigned int c);
    /// Reads the value that a setting has in a new job.
    unsigned int tarn_job_get_default_jobinfo_val(TARN_JOB_SETTING s, unsigned int& v);
    /// Changes a function's basic setting, which belongs to no job.
    unsigned int tarn_job_basic_func_set_value(TARN_JOB_FUNC_TYPE f, TARN_JOB_SETTING s, unsigned int v);

    /// Reads the disable information of an item of the job.
    unsigned int tarn_job_get_disable_info(unsigned int job, TARN_PHB_DISABLE_ITEM item, unsigned short& v);
    /// Reads the state of the job's phone-book start.
    unsigned int tarn_job_get_start_phb(unsigned int job, int& v);
    /// Reads the main message about the job.
    unsigned int tarn_job_get_main_message(unsigned int job, TARN_PHB_GET_MESSAGE& m);

    // Destinations: addresses of a job, each with an id of its own. All of these hold the job lock.

    /// Adds a destination and gives its id.
    unsigned int tarn_job_add_address(unsigned int job, unsigned int& addr_id, const TARN_JOB_SEND_INFO& info);
    /// Replaces a destination.
    unsigned int tarn_job_update_address(unsigned int job, unsigned int addr_id, const TARN_JOB_SEND_INFO& info);
    /// Deletes a destination.
    unsigned int tarn_job_delete_address(unsigned int job, unsigned int addr_id);
    /// Deletes all destinations.
    unsigned int tarn_job_delete_all_address(unsigned int job);
    /// Reads a destination.
    unsigned int tarn_job_get_address(unsigned int job, unsigned int addr_id, TARN_JOB_SEND_INFO& info);
    /// Adds the ids of the job's destinations, 100 at most, to the end of `ids`, even if the result is an
    /// error; `count` is how many were added.
    unsigned int tarn_job_get_address_id(unsigned int job, unsigned int& count, std::vector<unsigned int>& ids);

    // Documents

    /// Prepares a job on a box; `s` is not changed. Holds the job lock.
    unsigned int tarn_job_box_job_prepare(unsigned int job, TARN_BOX_JOB_INIT_SETTING& s);
    /// Prepares the retrieval of a document. Exactly 17 bytes are read from `a` and 256 from `d`, whatever
    /// stands in them; a null pointer sends zeros.
    unsigned int tarn_job_retrieve_document_prepare(unsigned int job, char* a, unsigned long b, unsigned long c,
                                                    char* d);
    /// Combines documents in the job; `info` is not changed.
    unsigned int tarn_job_combine_document(unsigned int job, TARN_PHB_COMBINE_DOC_INFO& info);

    // Data. A piece of data has a fixed size, and its layout is the service's.

    /// Prepares a direct-print job that needs no data from the application. Exactly 256 bytes are read
    /// from `a` and from `b`, whatever stands in them; a null pointer sends zeros.
    unsigned int tarn_job_direct_print_prepare(unsigned int job, char* a, char* b);
    /// Prepares a direct-print job that `tarn_job_write_stream_data` feeds, and makes the shared memory
    /// of the print data ready; what is there already is used again.
    ///
    /// Returns the service's result if that is not 0, or 0x04010001 when the shared memory could not be
    /// made ready. Holds no lock but, for a moment, the data lock.
    unsigned int tarn_job_direct_print_prepare(unsigned int job, TARN_JOB_STREAM_WRITE_FILE w);
    /// Hands one piece of print data to the service, which has read it when the call returns. Before
    /// `tarn_job_direct_print_prepare` has made the shared memory ready the service is asked all the
    /// same but gets no data, which is traced. Holds the data lock.
    unsigned int tarn_job_write_stream_data(unsigned int job, TARN_JOB_WRITE_STREAM_DATA& d);
    /// Fetches one piece of scanned data, even if the service's result is an error. Where no job of
    /// category 7 or 8 was made the service is asked all the same, `d` is left alone, and the result is
    /// 0x04010001. Holds the data lock.
    unsigned int tarn_job_get_scan_data(unsigned int job, TARN_JOB_GET_SCAN_DATA& d);
    /// Fetches one piece of recognised text, even if the service's result is an error. Where no job of
    /// category 7 was made the service is asked all the same, `d` is left alone, and the result is
    /// 0x04010001. Holds the data lock.
    unsigned int tarn_job_get_ocr_text_data(unsigned int job, TARN_JOB_GET_OCR_DATA& d);

    // The state of machine and application

    /// Prohibits jobs, or permits them again.
    unsigned int tarn_job_set_state_of_prohibition(TARN_STATE_OF_PROHIBITION st);
    /// Asks whether jobs are prohibited. The result is the answer.
    unsigned int tarn_job_check_state_of_prohibition();
    /// Tells the service of an energy-saving state, and gives its answer.
    unsigned int tarn_job_notify_energy_saving_mode(TARN_JOB_ENERGY_SAVING_STATE st, int& v);
    /// Tells the service that a user has logged out, for background work. Holds the job lock.
    unsigned int tarn_job_notify_logout_bkg(unsigned long arg);
    /// Asks whether the named application may be stopped to change its state. The result is the answer.
    /// Of the name, which must not be null, the first 31 bytes are sent.
    unsigned int tarn_job_check_app_stop_permission_to_change_state(const char* name);
    /// Tells the service that the named application has judged the change of its state. Of the name,
    /// which must not be null, the first 31 bytes are sent.
    unsigned int tarn_job_notify_finish_app_state_change_judgement(const char* name);
    /// Does nothing and returns 0: panel resources are answered through the panel facade.
    unsigned int tarn_job_panel_resource_response(TARN_PANEL_RESULT result, TARN_PANEL_RESOURCE_KIND kind,
                                                  TARN_PANEL_RESOURCE_REQUEST request);

    // Shared memory. The operations above use these; applications have no use for them. Each returns 0,
    // or 0x04010001 when the platform failed, which is traced.

    /// Creates the partition `name` with room for one block of `size` bytes, unless `part_id` names one
    /// already. Holds the data lock.
    unsigned int create_shared_memory(unsigned long size, char* name, void*& part_id);
    /// Finds the block registered under `blk_id`, whose contents it leaves, or allocates one of `size`
    /// bytes, registers it and clears it. Holds no lock.
    unsigned int alloc_shared_memory(int blk_id, void** block, unsigned long size, void*& part_id);
    /// Gives the block back to its partition. Holds no lock.
    unsigned int free_shared_memory(void* block, void*& part_id);
    /// Deletes the partition and makes `part_id` null, even if the platform refuses. Always returns 0.
    /// Holds the data lock.
    unsigned int delete_shared_memory(void*& part_id);

private:
    tarn_job_facade();

    unsigned int make_job_blocks_ready(unsigned int category, const char* operation);

    static tarn_job_facade* s_the_instance_;
    static OSW_Mutex_Semaphore* mtx_;
    static bmc_mc_client* s_the_client_;

    // The job lock and the data lock.
    OSW_Mutex_Semaphore job_mutex_;
    OSW_Mutex_Semaphore shm_mutex_;

    // Null is none. What happens to them outside a lock is done atomically.
    void* job_part_id_ = nullptr;
    void* job_ocr_part_id_ = nullptr;
    void* job_stm_part_id_ = nullptr;
    void* shared_mem_stream_data_ = nullptr;
    void* shared_mem_scan_data_ = nullptr;
    void* shared_mem_ocr_data_ = nullptr;
};

}  // namespace norvane
