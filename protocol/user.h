// Interface 3: logins and logouts, user information and rights, authentication modes, hidden
// accounts, and the local user list.
#pragma once

#include "frame/row.h"

namespace norvane::protocol::user {

using namespace frame;

inline constexpr long interface_id = 3;

template <long Id, fixed_text Name, typename Request, typename Reply = plain_reply>
using operation = frame::operation<interface_id, Id, Name, Request, Reply>;

using user_name = text<"user", 72, 129>;
using password = secret<text<"password", 201, 129>>;

/// The login certificate with which a login is answered.
using cert_reply = reply<20, word<"cert_id", 12>, result<16>>;
using rights_reply = reply<20, word<"rights", 12>, result<16>>;

using account_login = operation<0, "tarn_user_account_login",
    request<336, user_name, password, word<"mode", 332>>,
    cert_reply>;

using account_login_extra = operation<1, "tarn_user_account_login",
    request<596, user_name, password, word<"mode", 332>, text<"extra", 336, 257>>,
    cert_reply>;

using logout = operation<2, "tarn_user_logout",
    request<76, word<"cert_id", 72>>>;

using get_userinfo = operation<3, "tarn_user_get_userinfo",
    request<76, word<"kind", 72>>,
    reply<952, record<"info", "TARN_USERINFO_RECORD", 12, 936>, result<948>>>;

using get_rights = operation<4, "tarn_user_get_rights",
    request<332, user_name, password>,
    rights_reply>;

using get_authentication_mode = operation<5, "tarn_user_get_authentication_mode",
    request<72>,
    reply<20, word<"mode", 12>, result<16>>>;

using set_authentication_mode = operation<6, "tarn_user_set_authentication_mode",
    request<76, word<"mode", 72>>>;

/// The account's record holds its password.
using create_hide_account = operation<7, "tarn_user_create_hide_account",
    request<680, secret<record<"account", "TARN_HIDE_USERINFO_RECORD", 72, 608>>>>;

using update_hide_account = operation<8, "tarn_user_update_hide_account",
    create_hide_account::request>;

using delete_hide_account = operation<9, "tarn_user_delete_hide_account",
    request<204, user_name>>;

using delete_all_hide_account = operation<10, "tarn_user_delete_all_hide_account",
    request<72>>;

/// The card's identifier is all that this login asks for, so it is kept as secret as a password.
using idm_login = operation<11, "tarn_user_idm_login",
    request<140, secret<text<"idm", 72, 65>>>,
    cert_reply>;

using get_rights_extra = operation<12, "tarn_user_get_rights",
    request<588, user_name, password, text<"extra", 330, 257>>,
    rights_reply>;

using local_user_list_prepare = operation<13, "tarn_user_get_local_user_list_prepare",
    request<76, word<"arg", 72>>,
    reply<24, result<12>, word<"first_count", 16>, word<"second_count", 20>>>;

using local_user_list = page<operation<14, "tarn_user_get_local_user_list",
    request<76, word<"page", 72>>,
    reply<20, result<12>, word<"count", 16>>>, "TARN_USERINFO_RECORD", 936, 50>;

using local_user_list_finish = operation<15, "tarn_user_get_local_user_list_finish",
    request<76, word<"arg", 72>>>;

using set_func_auth_mode = operation<16, "tarn_user_set_func_auth_mode",
    request<76, word<"mode", 72>>>;

using logout_limit = operation<17, "tarn_user_logout_limit",
    request<76, word<"mode", 72>>>;

using logout_bkg = operation<18, "tarn_user_logout_bkg",
    logout::request>;

using operations = row_list<account_login, account_login_extra, logout, get_userinfo, get_rights,
    get_authentication_mode, set_authentication_mode, create_hide_account, update_hide_account,
    delete_hide_account, delete_all_hide_account, idm_login, get_rights_extra, local_user_list_prepare,
    local_user_list, local_user_list_finish, set_func_auth_mode, logout_limit, logout_bkg>;
static_assert(operations::distinct());

using notifications = row_list<>;

}  // namespace norvane::protocol::user
