// Interface 5: reserving and releasing web services, and where certificates lie.
#pragma once

#include "frame/row.h"

namespace norvane::protocol::webservice {

using namespace frame;

inline constexpr long interface_id = 5;

template <long Id, fixed_text Name, typename Request, typename Reply = plain_reply>
using operation = frame::operation<interface_id, Id, Name, Request, Reply>;

/// The file types of the two hdo certificates.
inline constexpr unsigned int first_hdo_certificate = 10;
inline constexpr unsigned int second_hdo_certificate = 11;

/// A web service of a kind, and who uses it.
using service_request = request<204, word<"kind", 72>, text<"name", 76, 128, 127>>;

using reserve = operation<0, "tarn_webservice_reserve", service_request>;

using release = operation<1, "tarn_webservice_release", service_request>;

using get_certificate = operation<2, "tarn_webservice_get_certificate",
    request<76, word<"type", 72>>,
    reply<532, text<"path", 12, 516>, result<528>>>;

using operations = row_list<reserve, release, get_certificate>;
static_assert(operations::distinct());

using notifications = row_list<>;

}  // namespace norvane::protocol::webservice
