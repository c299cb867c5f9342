#include "frame/row.h"

using namespace norvane::frame;

using wrong = operation<1, 2, "wrong", request<72>, reply<20, word<"value", 8>, result<16>>>;

constexpr auto length = wrong::reply::length;
