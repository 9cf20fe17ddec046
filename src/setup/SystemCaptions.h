// The System Setup dialog's captions, in one table.
#pragma once

class QDialog;

namespace calder {

class ErrMsg;

// All but those of the lists' entries. powerSource: the model's modes take the place of channels.
void SetSystemCaptions(QDialog& dialog, const ErrMsg& language);
void SetPowerSourceCaptions(QDialog& dialog, const ErrMsg& language, bool powerSource);

} // namespace calder
