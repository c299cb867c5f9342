// The common service: observers, service state and power, boxes and documents, address books.
#pragma once

#include "platform/bmc_mc.h"
#include "platform/emw_osw.h"
#include "tarn_types.h"

namespace norvane {

class tarn_common_observer;

/// The application's handle on the service's common interface.
///
/// Every operation is one synchronous request: it blocks until the service has answered and returns
/// the service's result, 0 for success. Outputs are written from the reply whatever the result; when
/// no reply arrives the result is 0 and the outputs are 0, so check an output's plausibility where an
/// unreachable service matters. Arguments are checked only where it is said; a text must not be null.
/// Any number of threads may call at the same time; no lock is held while a request is under way.
///
/// The operations ending in `_bkg` are for background work and carry the certificate id of the login
/// on whose behalf it is done, `cert_id`.
///
/// Lists come by pages, through shared memory. Each list is prepared, fetched page by page, and
/// finished, in this order:
///
///     unsigned int first = 0, second = 0, count = 0;
///     std::vector<TARN_BOX_LIST_INFO> boxes(50);              // a whole page
///     if (common->tarn_get_box_info_prepare(50, first, second) == 0) {
///         const unsigned int block = 1;                       // any number that no other thread uses
///         if (common->tarn_get_box_list_info(block, count, boxes.data()) == 0) show(boxes, count);
///         common->tarn_get_box_info_finish(first);
///     }
///
/// What `num`, the two figures and the argument of the finish mean, the service decides.
///
/// - A prepare takes the length of a page, `num`, and hands back two figures. When the service agrees,
///   the list's partition is created, or counted as used by one list more. If that fails the result is
///   still 0: it is the first page that then fails.
/// - A get takes the number of the block through which the page travels, `blk_id`, which the service is
///   told, and an array for a whole page, of the length that is stated; it stores how many elements it
///   has written there. The service's count is trusted: the array must hold what the service counts.
///   0x04010207 means that the page's shared memory failed; `count` is left as it was if nothing has
///   been sent. Two threads that get pages of one partition at the same time need two block numbers.
/// - A finish tells the service, and counts the partition as used by one list less; the last one deletes
///   it. Call exactly one finish for each prepare that returned 0: one too many leaves the count
///   wrong and the partition undeleted. 0x04010207 means that the partition could not be deleted.
///
/// Several lists can be open at the same time, lists of one partition among them: the lists of boxes and
/// documents share one, and so do those of addresses and group members. Only the bookkeeping of the
/// partitions is done under a lock.
class TARN_PUBLIC tarn_common_facade : public facade_template {
public:
    /// The partition of the lists of boxes and documents, and its size in bytes.
    static const char* const BOX_PARTITION;
    static const unsigned int BOX_PARTITION_SIZE = 154000;
    /// The partition of the lists of addresses, and its size in bytes.
    static const char* const ADDRESS_PARTITION;
    static const unsigned int ADDRESS_PARTITION_SIZE = 42480;
    /// The partition that takes its place when a list of group members is prepared first, and its size in
    /// bytes.
    static const char* const GRP_MEM_ADRS_PRT;
    static const unsigned int GRP_MEM_ADRS_PRT_SIZE = 21360;

    /// The one facade of this process. The first call creates it and waits for the service, asking up
    /// to 200 times with `emwOSWSleep(300)` after each refusal; the facade is returned even if the
    /// service never came up, and its requests then go unanswered. Later calls return at once.
    static tarn_common_facade* tarn_common_get_instance();

    ~tarn_common_facade() override;

    /// Does nothing: this facade receives no messages.
    long dispatch(long func_id, char* rcv_buf, unsigned int rcv_buf_len, gen_ipc_msghdr hdr) override;

    /// Creates the client and waits for the service. `tarn_common_get_instance` calls it once on the
    /// new facade; applications have no use for it. Returns 0, or 0x04010203 when the service was not
    /// there after 200 checks.
    unsigned int initialize_facade(tarn_common_facade* facade);

    // Observers

    /// Asks the service to notify `observer`, which must live until it is removed. The service knows it
    /// by its address and the first 15 bytes of its connection name. A null observer sends nothing,
    /// is reported as a call-service error (63124) and returns 0x04010204.
    ///
    ///     my_observer observer;                        // derived from tarn_common_observer
    ///     common->tarn_common_add_observer(&observer);
    ///     ...                                          // its operations are called meanwhile
    ///     common->tarn_common_remove_observer(&observer);
    unsigned int tarn_common_add_observer(tarn_common_observer* observer);
    /// Asks the service not to notify `observer` any more. A null observer is treated as above.
    unsigned int tarn_common_remove_observer(tarn_common_observer* observer);

    // Service state and activation

    /// Tells the service what the application accepts from now on.
    unsigned int tarn_common_service_state_changed(TARN_ACCEPTANCE_TYPE type);
    /// Tells the service of the application's network state.
    unsigned int tarn_common_network_state_changed(TARN_NETWORK_TYPE type);
    /// Asks for the activation of applications of a kind, on the occasion `scenario`.
    unsigned int tarn_common_request_activate(TARN_KIND_OF_SCENARIO scenario, TARN_KIND_OF_APL application);
    /// Has the service check an eweb certificate. Keep `certificate` shorter than 36 bytes: a text of 36
    /// bytes is sent without a terminator, and of a longer one the first 36 bytes are sent.
    unsigned int tarn_check_eweb_cert_info(const char* certificate);
    /// Asks all resident applications to take another state.
    unsigned int tarn_request_all_resident_apps_to_change_state(TARN_REQ_APP_STATE state);
    /// Reads the state of the Java VM.
    unsigned int tarn_check_javavm_status(TARN_JAVAVM_STATE& state);

    // Power

    /// Asks for a power-saving state.
    unsigned int tarn_request_energy_saving_mode(TARN_STS_SLEEP state);
    /// Prohibits power saving, or allows it again, as `flag` says.
    unsigned int tarn_request_save_mode_prohibition(int flag);
    /// Asks the service to keep out of deep sleep.
    unsigned int tarn_suspend_deep_sleep(unsigned int value);
    /// Takes back `tarn_suspend_deep_sleep`.
    unsigned int tarn_resume_deep_sleep(unsigned int value);
    /// Sets the date on which the machine wakes up. Of `date` the low 32 bits are sent.
    unsigned int tarn_set_wakeup_date(unsigned int value, long date);
    /// Asks for the date on which the machine wakes up. The answer is what is returned, there is no output
    /// beside it; 0 when the service cannot be reached.
    unsigned int tarn_get_wakeup_date();
    /// Reads whether deep sleep is allowed at the moment.
    unsigned int tarn_check_allowed_to_be_deep_sleep_mode(int& allowed);

    // Boxes and their documents. Ids are 32-bit numbers. `text` is the short text with which a box is
    // accessed: of a longer one the first 17 bytes are sent.

    /// Creates a box.
    unsigned int tarn_add_box(const TARN_BOX_DETAIL_INFO& info);
    /// Changes a box's settings.
    unsigned int tarn_update_box_info(unsigned long box_id, const char* text, const TARN_BOX_DETAIL_INFO& info);
    /// Reads a box's settings. They stay as they were when the service does not fill them in.
    unsigned int tarn_get_box_detail_info(unsigned long box_id, const char* text, TARN_BOX_DETAIL_INFO& info);
    /// Deletes a box.
    unsigned int tarn_delete_box(unsigned long box_id, const char* text);
    /// Deletes a document of a box.
    unsigned int tarn_delete_document(unsigned long box_id, const char* text, unsigned long document_id);
    /// Deletes the document of an easy box that `access_path` leads to. Of a longer path the first 1531
    /// bytes are sent.
    unsigned int tarn_delete_easy_document(const char* access_path);
    /// Reads how much room is left in a box.
    unsigned int tarn_get_box_available_capacity(unsigned long box_id, unsigned long& capacity);

    /// `tarn_add_box` for background work.
    unsigned int tarn_add_box_bkg(const TARN_BOX_DETAIL_INFO& info, unsigned long cert_id);
    /// `tarn_update_box_info` for background work.
    unsigned int tarn_update_box_info_bkg(unsigned long box_id, const char* text, unsigned long cert_id,
                                          const TARN_BOX_DETAIL_INFO& info);
    /// `tarn_delete_box` for background work.
    unsigned int tarn_delete_box_bkg(unsigned long box_id, const char* text, unsigned long cert_id);
    /// `tarn_get_box_detail_info` for background work.
    unsigned int tarn_get_box_detail_info_bkg(unsigned long box_id, const char* text, unsigned long cert_id,
                                              TARN_BOX_DETAIL_INFO& info);
    /// `tarn_delete_document` for background work.
    unsigned int tarn_delete_document_bkg(unsigned long box_id, const char* text, unsigned long document_id,
                                          unsigned long cert_id);
    /// `tarn_get_box_available_capacity` for background work.
    unsigned int tarn_get_box_available_capacity_bkg(unsigned long box_id, unsigned long cert_id,
                                                     unsigned long& capacity);

    // Fax boxes and their documents, with ids and texts as those of boxes

    /// Creates a fax box.
    unsigned int tarn_add_fax_box(const TARN_FAX_BOX_DETAIL_INFO& info);
    /// Changes a fax box's settings.
    unsigned int tarn_update_fax_box_info(unsigned long fax_box_id, const char* text,
                                          const TARN_FAX_BOX_DETAIL_INFO& info);
    /// Reads a fax box's settings. They are all zero when the service does not fill them in.
    unsigned int tarn_get_fax_box_detail_info(unsigned long fax_box_id, const char* text,
                                              TARN_FAX_BOX_DETAIL_INFO& info);
    /// Deletes a fax box.
    unsigned int tarn_delete_fax_box(unsigned long fax_box_id, const char* text);
    /// Deletes a document of a fax box.
    unsigned int tarn_delete_fax_document(unsigned long fax_box_id, const char* text, unsigned long document_id);

    // Retained jobs. Of a longer `text` the first 5 bytes are sent.

    /// Reads about a retained job's document. `info` stays as it was when the service does not fill it in.
    unsigned int tarn_get_job_retention_doc_info(unsigned long document_id, const char* text, TARN_JBRT_DOC_INFO& info);
    /// Deletes a retained job's document.
    unsigned int tarn_delete_job_retention_doc(TARN_JBRT_BOX_TYPE box_type, unsigned long document_id,
                                               const char* text);

    // Lists of boxes and documents, through BOX_PARTITION

    /// The boxes. A page has at most 50 of them.
    unsigned int tarn_get_box_info_prepare(unsigned int num, unsigned int& first, unsigned int& second);
    unsigned int tarn_get_box_info_prepare_bkg(unsigned int num, unsigned long cert_id, unsigned int& first,
                                               unsigned int& second);
    unsigned int tarn_get_box_list_info(unsigned int blk_id, unsigned int& count, TARN_BOX_LIST_INFO* boxes);
    unsigned int tarn_get_box_info_finish(unsigned int list);

    /// The documents of a box. A page has at most 100 of them.
    unsigned int tarn_get_document_info_prepare(unsigned long box_id, const char* text, unsigned int num,
                                                unsigned int& first, unsigned int& second);
    unsigned int tarn_get_document_info_prepare_bkg(unsigned long box_id, const char* text, unsigned int num,
                                                    unsigned long cert_id, unsigned int& first, unsigned int& second);
    unsigned int tarn_get_document_info(unsigned int blk_id, unsigned int& count, TARN_DOC_INFO* documents);
    unsigned int tarn_get_document_info_finish(unsigned int list);

    /// The easy boxes at `access_path`, of which the first 1531 bytes are sent. A page has at most 50 of
    /// them.
    unsigned int tarn_get_easy_box_info_prepare(const char* access_path, unsigned int num, unsigned int& first,
                                                unsigned int& second);
    unsigned int tarn_get_easy_box_info(unsigned int blk_id, unsigned int& count, TARN_EASY_BOX_INFO* boxes);
    unsigned int tarn_get_easy_box_info_finish(unsigned int list);

    /// The fax boxes. A page has at most 50 of them.
    unsigned int tarn_get_fax_box_list_prepare(unsigned int num, unsigned int& first, unsigned int& second);
    unsigned int tarn_get_fax_box_list(unsigned int blk_id, unsigned int& count, TARN_FAX_BOX_LIST* boxes);
    unsigned int tarn_get_fax_box_list_finish(unsigned int list);

    /// The documents of a fax box. A page has at most 100 of them.
    unsigned int tarn_get_fax_document_list_prepare(unsigned long fax_box_id, const char* text, unsigned int num,
                                                    unsigned int& first, unsigned int& second);
    unsigned int tarn_get_fax_document_list(unsigned int blk_id, unsigned int& count, TARN_FAX_DOC_LIST* documents);
    unsigned int tarn_get_fax_document_list_finish(unsigned int list);

    /// The retained jobs' documents in the boxes of one kind. A page has at most 100 of them.
    unsigned int tarn_get_job_retention_doc_list_prepare(TARN_JBRT_BOX_TYPE box_type, unsigned int num,
                                                         unsigned int& first, unsigned int& second);
    unsigned int tarn_get_job_retention_doc_list(unsigned int blk_id, unsigned int& count,
                                                 TARN_JBRT_DOC_LIST* documents);
    unsigned int tarn_get_job_retention_doc_list_finish(unsigned int list);

    // Lists of addresses, through ADDRESS_PARTITION or, where a list of group members was prepared first,
    // through GRP_MEM_ADRS_PRT. A page has at most 20 elements.

    /// The persons of the address book.
    unsigned int tarn_get_personal_address_list_prepare(unsigned int num, unsigned int& first, unsigned int& second);
    unsigned int tarn_get_personal_address_list(unsigned int blk_id, unsigned int& count,
                                                TARN_PERSONAL_ADDRESS* addresses);
    unsigned int tarn_get_personal_address_list_finish(unsigned int list);

    /// The groups of the address book.
    unsigned int tarn_get_group_address_list_prepare(unsigned int num, unsigned int& first, unsigned int& second);
    unsigned int tarn_get_group_address_list(unsigned int blk_id, unsigned int& count, TARN_GROUP_ADDRESS* addresses);
    unsigned int tarn_get_group_address_list_finish(unsigned int list);

    /// The members of a group, as addresses.
    unsigned int tarn_get_group_member_address_list_prepare(unsigned short group, unsigned int num, unsigned int& first,
                                                            unsigned int& second);
    unsigned int tarn_get_group_member_address_list(unsigned int blk_id, unsigned int& count,
                                                    TARN_PERSONAL_ADDRESS* addresses);
    /// The members of a group, as members: half as long. Prepared first, it makes do with the smaller
    /// partition GRP_MEM_ADRS_PRT, which is too small for a page of addresses.
    unsigned int tarn_get_group_member_address_list_grp_mem_str_prepare(unsigned short group, unsigned int num,
                                                                        unsigned int& first, unsigned int& second);
    unsigned int tarn_get_group_member_address_list(unsigned int blk_id, unsigned int& count,
                                                    TARN_GROUP_MEMBER* members);
    /// Finishes either list of group members.
    unsigned int tarn_get_group_member_address_list_finish(unsigned int list);

    /// The persons of the address book that match a name, of which the first 193 bytes are sent. An empty
    /// name or a null array is refused by the get: it sends nothing and returns 0x04010205.
    unsigned int tarn_search_personal_address_list_prepare(unsigned int num, unsigned int& first, unsigned int& second);
    unsigned int tarn_search_personal_address_list_prepare(unsigned int num, const char* name, unsigned int& first,
                                                           unsigned int& second);
    unsigned int tarn_search_personal_address_list(unsigned int blk_id, const char* name, unsigned int& count,
                                                   TARN_PERSONAL_ADDRESS* addresses);
    unsigned int tarn_search_personal_address_list_finish(unsigned int list);

    /// The groups of the address book that match a name, of which the first 193 bytes are sent. An empty
    /// name is refused by the get: it sends nothing and returns 0x04010205.
    unsigned int tarn_search_group_address_list_prepare(unsigned int num, unsigned int& first, unsigned int& second);
    unsigned int tarn_search_group_address_list_prepare(unsigned int num, const char* name, unsigned int& first,
                                                        unsigned int& second);
    unsigned int tarn_search_group_address_list(unsigned int blk_id, const char* name, unsigned int& count,
                                                TARN_GROUP_ADDRESS* addresses);
    unsigned int tarn_search_group_address_list_finish(unsigned int list);

    // The partitions' bookkeeping, on which the lists are built; applications that only use lists have no
    // use for it. Each operation holds the facade's lock from beginning to end, and returns 0, or
    // 0x04010207 when the platform fails.

    /// Creates the partition `name`, 100 bytes larger than `size`, if `part_id` is null, and counts one
    /// more user of it, created or not. The count restarts at 1 before it reaches 0x7FFFFFFF. A failure
    /// leaves the count alone.
    unsigned int create_shared_memory(unsigned long size, void*& part_id, unsigned int& mem_flag, const char* name);
    /// Finds the block registered under `blk_id` and clears all of it, or allocates and registers a
    /// zeroed one of `size` bytes.
    unsigned int alloc_shared_memory(int blk_id, void** block, unsigned long size, void*& part_id);
    /// Frees a block and its number.
    unsigned int free_shared_memory(void* block, void* part_id);
    /// Counts one user less. When none is left it deletes the partition and sets `part_id` to null; a
    /// failure leaves `part_id` alone. A count of 0 becomes 0xFFFFFFFF.
    unsigned int delete_shared_memory(void*& part_id, unsigned int& mem_flag);

private:
    class lists;

    tarn_common_facade();

    static tarn_common_facade* s_the_instance_;
    static bmc_mc_client* s_the_client_;
    static unsigned int semid_;

    /// Guards everything below.
    OSW_Mutex_Semaphore part_mutex_;
    void* address_part_id_ = nullptr;
    void* box_part_id_ = nullptr;
    unsigned int address_mem_flag_ = 0;
    unsigned int box_mem_flag_ = 0;
};

}  // namespace norvane
