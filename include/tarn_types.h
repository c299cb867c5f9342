// The TARN service's record and enumeration types, as the facades and observers exchange them.
//
// Enumerations travel as 32-bit words; their values are the service's. Records travel byte for byte.
//
// An application that has the service's own definitions of the records uses them in place of these by
// naming the header that has them to the compiler:
//
//     c++ -DTARN_SERVICE_TYPES_HEADER='"service_types.h"' ...
//
// That header defines every record that is declared here except TARN_ACC_FELICA_SETTING_INFO, in the
// global namespace and under the names they have here. It may use the enumerations, which stay those of
// this header. Records whose size the protocol fixes are checked while compiling. The library is the
// same with either definition.
#pragma once

#include <string>
#include <type_traits>

#define TARN_PUBLIC __attribute__((visibility("default")))

// Enumerations: common

/// Whether the application accepts what the service may ask of it.
enum TARN_ACCEPTANCE_TYPE : unsigned int {};
/// State of the network.
enum TARN_NETWORK_TYPE : unsigned int {};
/// Occasion on which an application is activated.
enum TARN_KIND_OF_SCENARIO : unsigned int {};
/// Kind of application.
enum TARN_KIND_OF_APL : unsigned int {};
/// Power-saving state that is asked for.
enum TARN_STS_SLEEP : unsigned int {};
/// State that the resident applications are asked to take.
enum TARN_REQ_APP_STATE : unsigned int {};
/// State of the Java VM.
enum TARN_JAVAVM_STATE : unsigned int {};
/// Kind of box in which jobs are retained.
enum TARN_JBRT_BOX_TYPE : unsigned int {};
/// Connection error that the service notifies.
enum TARN_EVENT_CONNECTION_ERROR : unsigned int {};
/// Sleep state that the service notifies.
enum TARN_EVENT_SLEEP_STATE : unsigned int {};

// Enumerations: system information

/// Which system value, machine information or paper source is meant.
enum TARN_ENTKEY : unsigned int {};

// Enumerations: user

/// How users are authenticated.
enum TARN_USER_AUTHMODE : unsigned int {};
/// Which user is meant.
enum TARN_USER_USERKIND : unsigned int {};
/// What a user may do, as the service's bits.
enum TARN_USER_RIGHTS : unsigned int {};
/// A mode of function authentication or of the logout limit.
enum TARN_MODE_10_VAL : unsigned int {};

// Enumerations: panel

/// How a view was updated.
enum TARN_PANEL_VIEW_UPDATE_TYPE : unsigned int {};
/// What happened to a key.
enum TARN_PANEL_KEY_EVENT : unsigned int {};
/// How the buzzer sounds.
enum TARN_BUZZER_TYPE : unsigned int {};
/// State of the LED of the start key.
enum TARN_LED_STATE : unsigned int {};
/// Which screen is meant.
enum TARN_PANEL_DISPLAY_TYPE : unsigned int {};
/// Which panel function a value is for.
enum TARN_PANEL_FUNC_TYPE : unsigned int {};
/// What a panel function is set to.
enum TARN_PANEL_SET_VALUE : unsigned int {};
/// Which of an application's screens is meant.
enum TARN_PANEL_APL_SCREEN : unsigned int {};
/// What became of a request for a resource of the panel.
enum TARN_PANEL_RESULT : unsigned int {};
/// A mode of the panel's cassette information.
enum TARN_PANEL_MODE_10_VAL : unsigned int {};
/// What is to happen to a reset timer.
enum TARN_PNL_RST_TMR : unsigned int {};
/// Which resource of the panel is meant.
enum TARN_PANEL_RESOURCE_KIND : unsigned int {};
/// What is asked of a resource of the panel.
enum TARN_PANEL_RESOURCE_REQUEST : unsigned int {};
/// What kind of display text is meant.
enum TARN_PANEL_DISPLAY_TEXT_TYPE : unsigned int {};
/// What is asked of the soft ten-key; nothing else is supported.
enum TARN_PANEL_SOFT_TENKEY_REQUEST_KIND : unsigned int {
    TARN_PANEL_SOFT_TENKEY_READ = 0,
    TARN_PANEL_SOFT_TENKEY_SET = 1,
};

// Enumerations: accessory

/// Which site a FeliCa setting belongs to.
enum TARN_ACC_FELICA_SETTING_SITE : unsigned int {};
/// How FeliCa type-C cards are read.
enum TARN_ACC_TYPE_C_READ_TYPE : unsigned int {};

// Enumerations: jobs

/// What kind of job to start.
enum TARN_JOB_CATEGORY : unsigned int {};
/// Which setting of a job is meant.
enum TARN_JOB_SETTING : unsigned int {};
/// Which phone-book (phb) setting of a job is meant.
enum TARN_PHB_SETTING_ID : unsigned int {};
/// Whether jobs are prohibited.
enum TARN_STATE_OF_PROHIBITION : unsigned int {};
/// Which item's disable information is meant.
enum TARN_PHB_DISABLE_ITEM : unsigned int {};
/// An energy-saving state of the machine.
enum TARN_JOB_ENERGY_SAVING_STATE : unsigned int {};
/// Which jobs to list.
enum TARN_JOB_KIND : unsigned int {};
/// Which function's basic setting is meant.
enum TARN_JOB_FUNC_TYPE : unsigned int {};
/// What a job's record is for. 4 is a direct-print job fed as a stream, 7 a scan job with text
/// recognition (OCR), 8 a scan job without.
enum TARN_JOB_PHB_CATEGORY : unsigned int {};
/// How a direct-print job that is fed as a stream is written.
enum TARN_JOB_STREAM_WRITE_FILE : unsigned int {};

// Enumerations: department

/// The department mode.
enum TARN_DEPT_DEPT_MODE : unsigned int {};
/// The mix mode.
enum TARN_DEPT_MIX_MODE : unsigned int {};
/// The invalid-department mode.
enum TARN_DEPT_INVALID_DEPT_MODE : unsigned int {};
/// What happens when a department reaches its limit.
enum TARN_DEPT_LIMIT_ACTION : unsigned int {};

// Enumerations: job information and logs

/// Which of a job's logs is meant.
enum TARN_JOBINFO_JOBLOG_TYPE_VAL : unsigned int {};
/// How far an image log has come.
enum TARN_IMAGELOG_CREATE_STATUS_VAL : unsigned int {};

// Enumerations: web service

/// Which kind of web service is meant.
enum TARN_WEBSERVICE_KIND : unsigned int {};
/// Which certificate file is meant.
enum TARN_SSL_FILE_TYPE : unsigned int {};

/// Checks a record of the service's that is copied byte for byte, exactly `size` of them.
#define TARN_RECORD_OF_SIZE(name, size)                                  \
    static_assert(sizeof(name) == (size), #name " has " #size " bytes"); \
    static_assert(std::is_trivially_copyable<name>::value, #name " is copied byte for byte")

/// Checks a record of the service's of which the library knows the first `size` bytes.
#define TARN_RECORD_OF_SIZE_OR_MORE(name, size) \
    static_assert(sizeof(name) >= (size), #name " has " #size " bytes or more")

#ifdef TARN_SERVICE_TYPES_HEADER

#include TARN_SERVICE_TYPES_HEADER

/// A record of `size` bytes that the service's header defines.
#define TARN_OPAQUE_RECORD(name, size) TARN_RECORD_OF_SIZE(name, size)

#else

/// Defines a record of the service's whose fields this library does not know: `size` bytes.
#define TARN_OPAQUE_RECORD(name, size) \
    struct name {                      \
        unsigned char bytes[size];     \
    }

/// A retained job's document.
struct TARN_JBRT_DOC_INFO {
    unsigned int words[4];
};

/// Which counter is meant.
struct TARN_COUNT_INFO {
    unsigned short kind;
    unsigned char detail;
};

/// How and where the soft ten-key is displayed.
struct TARN_PANEL_SOFT_TENKEY_DISPLAY_INFO {
    unsigned int display_mode;
    unsigned int layout;
    unsigned int position;
    unsigned short x;
    unsigned short y;
};

/// The card reader as a device.
struct TARN_ACC_ICCARD_DEVICE_INFO {
    unsigned short product_id;
    unsigned short vendor_id;
    unsigned char card_device_type;
    /// The service's; not interpreted.
    unsigned char reserved;
};

/// The card reader after its state has changed, up to the last field that is known of it.
struct TARN_ACC_ICCARD_STATE_CHANGE_INFO {
    unsigned short product_id;
    unsigned short vendor_id;
    unsigned char read_type;
    /// The service's; not interpreted.
    unsigned char reserved[6];
    unsigned char status;
};

/// A detected card. The service defines it; this library hands over where it stands.
struct TARN_ACC_ICCARD_INFO;
/// Phone-book information. The service defines it; the library only passes references to it on.
struct TARN_PHB_INFO;

// Records that only the service's own headers define: this library passes references to them.
struct TARN_EVENT_JOB_UPDATE_LOG;
struct TARN_EVENT_PRINT_PAGE;
struct TARN_EVENT_SCAN_PAGE;
struct TARN_EVENT_SEND_PAGE;

#endif

// Records: common

/// A box with all its settings.
TARN_OPAQUE_RECORD(TARN_BOX_DETAIL_INFO, 764);
/// A fax box with all its settings.
TARN_OPAQUE_RECORD(TARN_FAX_BOX_DETAIL_INFO, 764);
/// One box of a list.
TARN_OPAQUE_RECORD(TARN_BOX_LIST_INFO, 748);
/// One document of a box.
TARN_OPAQUE_RECORD(TARN_DOC_INFO, 292);
/// One easy box of a list.
TARN_OPAQUE_RECORD(TARN_EASY_BOX_INFO, 3080);
/// One fax box of a list.
TARN_OPAQUE_RECORD(TARN_FAX_BOX_LIST, 748);
/// One document of a fax box.
TARN_OPAQUE_RECORD(TARN_FAX_DOC_LIST, 292);
/// One retained job's document of a list.
TARN_OPAQUE_RECORD(TARN_JBRT_DOC_LIST, 408);
/// One person of the address book.
TARN_OPAQUE_RECORD(TARN_PERSONAL_ADDRESS, 2124);
/// One group of the address book.
TARN_OPAQUE_RECORD(TARN_GROUP_ADDRESS, 390);
/// One member of a group of the address book.
TARN_OPAQUE_RECORD(TARN_GROUP_MEMBER, 1068);
TARN_RECORD_OF_SIZE(TARN_JBRT_DOC_INFO, 16);

// Records: system information

/// Paper information.
TARN_OPAQUE_RECORD(TARN_PAPER_INFO, 4);
TARN_RECORD_OF_SIZE_OR_MORE(TARN_COUNT_INFO, 3);

// Records: user

/// One user's information; an element of the local user list.
TARN_OPAQUE_RECORD(TARN_USERINFO_RECORD, 936);
/// A hidden account's information.
TARN_OPAQUE_RECORD(TARN_HIDE_USERINFO_RECORD, 608);

// Records: panel

TARN_RECORD_OF_SIZE(TARN_PANEL_SOFT_TENKEY_DISPLAY_INFO, 16);

// Records: accessory

TARN_RECORD_OF_SIZE(TARN_ACC_ICCARD_DEVICE_INFO, 6);
TARN_RECORD_OF_SIZE_OR_MORE(TARN_ACC_ICCARD_STATE_CHANGE_INFO, 12);

// Records: jobs

/// One destination of a job.
TARN_OPAQUE_RECORD(TARN_JOB_SEND_INFO, 460);
/// The settings with which a box job begins.
TARN_OPAQUE_RECORD(TARN_BOX_JOB_INIT_SETTING, 1568);
/// Which documents are combined, and how.
TARN_OPAQUE_RECORD(TARN_PHB_COMBINE_DOC_INFO, 292);
/// A message about a job.
TARN_OPAQUE_RECORD(TARN_PHB_GET_MESSAGE, 288);
/// The state of a job.
TARN_OPAQUE_RECORD(TARN_JOB_STATE, 296);
/// One piece of a job's scanned data.
TARN_OPAQUE_RECORD(TARN_JOB_GET_SCAN_DATA, 16392);
/// One piece of a job's recognised text.
TARN_OPAQUE_RECORD(TARN_JOB_GET_OCR_DATA, 24604);
/// One piece of a direct-print job's data.
TARN_OPAQUE_RECORD(TARN_JOB_WRITE_STREAM_DATA, 16392);

// Records: department

/// A hidden department.
TARN_OPAQUE_RECORD(TARN_DEPT_DEPTINFO, 480);

// Records: job information and logs

/// The log record of a finished job.
TARN_OPAQUE_RECORD(TARN_JOBINFO_JOBLOG, 1240);
/// One receive record of a job.
TARN_OPAQUE_RECORD(TARN_JOBINFO_RECEIVE_INFO, 280);
/// One send record of a job.
TARN_OPAQUE_RECORD(TARN_JOBINFO_SEND_INFO, 404);
/// The start of a renint operation.
TARN_OPAQUE_RECORD(TARN_EVENT_RENINT_START, 16);

/// The FeliCa settings of one site. Of each string up to 16 bytes are stored.
struct TARN_ACC_FELICA_SETTING_INFO {
    std::string first_string;
    std::string second_string;
    std::string third_string;
    unsigned char first_byte;
    unsigned char second_byte;
};
