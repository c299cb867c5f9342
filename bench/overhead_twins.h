// The measured operations as one would write them by hand: zero the record, store the words, send, load
// the words. They keep the library's promises, the null client included. All operations that read a
// text are here, since the compiler shares code among them in the library too.
#pragma once

#include "platform/bmc_mc.h"

#include <string>

namespace twins {

extern bmc_mc_client* client;

unsigned int set_number(unsigned int key, unsigned int value);
unsigned int get_number(unsigned int key, unsigned int& value);
unsigned int set_machine_number(unsigned int key, unsigned long selector, unsigned int value);
unsigned int get_text(unsigned int key, std::string& text);
unsigned int get_machine_text(unsigned int key, unsigned long selector, std::string& text);
unsigned int get_machine_text_bkg(unsigned int key, unsigned long selector, std::string& text);
unsigned int set_text(unsigned int key, std::string text);

}  // namespace twins
