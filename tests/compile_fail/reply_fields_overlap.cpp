#include "frame/row.h"

using namespace norvane::frame;

using wrong = operation<1, 2, "wrong", request<72>, reply<20, result<12>, half<"value", 14>>>;

constexpr auto length = wrong::reply::length;
