// clsErrChr: input checking and error messages.
//
// The object holds its own clsCharacter, through which every message text is
// fetched from the catalogue, and the fields of the last error: its number,
// the composed message, and two caption/value pairs that fill the message's
// placeholders. The language offset has only a setter, passed straight on to
// the object's clsCharacter.
#pragma once

#include <cstdint>
#include <memory>

#include "zelkora/frame/cls_character.h"

namespace zelkora {

class clsErrChr {
 public:
  clsErrChr();
  explicit clsErrChr(std::shared_ptr<const platform::Platform> platform);
  ~clsErrChr();
  clsErrChr(const clsErrChr&) = delete;
  clsErrChr& operator=(const clsErrChr&) = delete;

  // Passes the offset on to the object's clsCharacter; keeps no copy.
  void lLanguage(int32_t offset) { character_->lLanguage(offset); }

  int32_t lError_ID() const { return error_id_; }
  void lError_ID(int32_t id) { error_id_ = id; }
  const Text& tError_Txt() const { return error_text_; }
  void tError_Txt(TextView text) { error_text_ = text; }
  bool bMessageIgnore() const { return message_ignore_; }
  void bMessageIgnore(bool ignore) { message_ignore_ = ignore; }
  void tCheckNumberSign(TextView sign) { check_sign_ = sign; }
  void tCaption1(TextView text) { caption1_ = text; }
  void TextValue1(TextView text) { value1_ = text; }
  void tCaption2(TextView text) { caption2_ = text; }
  void TextValue2(TextView text) { value2_ = text; }
  void dValue1(double value) { number1_ = value; }
  void dValue2(double value) { number2_ = value; }
  void lListRes(int32_t id) { list_res_ = id; }

  // For the library's own subsystems.
  clsCharacter& character() { return *character_; }
  const clsCharacter& character() const { return *character_; }
  const Text& thousands_separator() const { return thousands_separator_; }

 private:
  std::unique_ptr<clsCharacter> character_;
  int32_t error_id_ = 0;
  int32_t list_res_ = 0;
  Text error_text_;
  Text caption1_, value1_, caption2_, value2_;
  Text check_sign_;
  Text thousands_separator_;
  bool message_ignore_ = false;
  double number1_ = 0;
  double number2_ = 0;
};

}  // namespace zelkora
