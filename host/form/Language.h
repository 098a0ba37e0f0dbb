// What forms that are made and messages about forms speak.
#pragma once

namespace qrn::form {

enum class Language { Japanese, English };

}  // namespace qrn::form
