// Interface 4: system settings by entry key, machine information, paper and counters.
#pragma once

#include "frame/row.h"

namespace norvane::protocol::systeminfo {

using namespace frame;

inline constexpr long interface_id = 4;

template <long Id, fixed_text Name, typename Request, typename Reply = plain_reply>
using operation = frame::operation<interface_id, Id, Name, Request, Reply>;

/// A text of a reply, and the room that the service has for it.
using reply_text = text<"text", 12, 1028>;

using get_number = operation<0, "tarn_systeminfo_get_value",
    request<80, word<"key", 72>>,
    reply<20, word<"value", 12>, result<16>>>;

using get_text = operation<1, "tarn_systeminfo_get_value",
    request<1104, word<"key", 72>>,
    reply<1044, reply_text, result<1040>>>;

using set_number = operation<2, "tarn_systeminfo_set_value",
    request<80, word<"key", 72>, word<"value", 76>>>;

using set_text = operation<3, "tarn_systeminfo_set_value",
    request<1104, word<"key", 72>, text<"text", 76, 1028, 1025>>>;

using get_paper_info = operation<4, "tarn_systeminfo_get_paper_info",
    request<76, word<"key", 72>>,
    reply<20, record<"paper", "TARN_PAPER_INFO", 12, 4>, result<16>>>;

using get_count = operation<5, "tarn_systeminfo_get_count",
    request<76, half<"kind", 72>, octet<"detail", 74>>,
    reply<20, word<"count", 12>, result<16>>>;

using get_machine_number = operation<6, "tarn_systeminfo_get_machine_info",
    request<80, word<"key", 72>, word<"selector", 76>>,
    reply<20, word<"value", 12>, result<16>>>;

using set_machine_number = operation<7, "tarn_systeminfo_set_machine_info",
    request<84, word<"key", 72>, word<"selector", 76>, word<"value", 80>>>;

using get_machine_text = operation<8, "tarn_systeminfo_get_machine_info",
    request<80, word<"key", 72>, word<"selector", 76>>,
    reply<1044, reply_text, result<1040>>>;

using get_screen_size = operation<9, "tarn_systeminfo_get_screen_size",
    request<72>,
    reply<20, word<"size", 12>, result<16>>>;

using get_model_type = operation<10, "tarn_systeminfo_get_model_type",
    request<72>,
    reply<20, word<"model", 12>, result<16>>>;

using get_fax_encryption_validity = operation<11, "tarn_systeminfo_get_fax_encryption_validity",
    request<76, word<"key", 72>>,
    reply<20, octet<"validity", 12>, result<16>>>;

using get_machine_number_bkg = operation<12, "tarn_systeminfo_get_machine_info_bkg",
    get_machine_number::request, get_machine_number::reply>;

using get_machine_text_bkg = operation<13, "tarn_systeminfo_get_machine_info_bkg",
    get_machine_text::request, get_machine_text::reply>;

using set_machine_number_bkg = operation<14, "tarn_systeminfo_set_machine_info_bkg",
    set_machine_number::request>;

using operations = row_list<get_number, get_text, set_number, set_text, get_paper_info, get_count,
    get_machine_number, set_machine_number, get_machine_text, get_screen_size, get_model_type,
    get_fax_encryption_validity, get_machine_number_bkg, get_machine_text_bkg, set_machine_number_bkg>;
static_assert(operations::distinct());

using notifications = row_list<>;

}  // namespace norvane::protocol::systeminfo
