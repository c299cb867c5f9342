#include "frame/row.h"

using namespace norvane::frame;

using wrong = operation<1, 2, "wrong", request<72>, reply<16, word<"value", 12>>>;

constexpr auto length = wrong::reply::length;
