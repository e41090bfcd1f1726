// The host's general services: what the kit asks of the application by name.
//
// The general service table is handed over in pluginMain; without it every call has the fallback stated below.
#pragma once

#include "kit/host/AKHostTables.h"
#include "kit/text/AKString.h"

/// The general service table; null without a host.
extern const AKGeneralTable* gAKWrap;

/// Display pixels a map unit, as the host gave it; 1 before.
extern double gAGDisplayScale;

/// The host's status; -1 without a host.
int NKGetApplicationProperty(const AKString& key, AKValue* out);

/// The path of a kind that the host numbers, owned by the host; kAKNullFilePath without a host.
const AKFilePath& NKGetStandardPath(unsigned int kind);
/// The standard path of `kind` with `fileName` as its file name.
AKFilePath NKGetStandardFilePath(unsigned int kind, const AKString& fileName);

/// Sets the domain of the lookups that follow; each caller sets its own right before them.
void NKLocaleSetDomain(const char* domain);
/// The host's translation (borrowed from the host), or `text` itself without a host.
const char* NKLocaleGetString(const char* text);

///@{
/// Has the user choose a file to save to, or to open. `first` is the dialog's title, `second` a list of extensions such
/// as "png;jpg", empty for all files. 1 when the user chose, with the choice in `path`, which goes in as a proposal; 0
/// without a host or without that dialog.
int AKGUIDialogSaveFile(AKFilePath& path, const AKString& first, const AKString& second);
int AKGUIDialogOpenFile(AKFilePath& path, const AKString& first, const AKString& second);
///@}
/// Shows (command 0) how far a long piece of work is, `fraction` from 0 to 1, or closes the window (1). 1 when the user
/// wants the work to stop; 0 without a host or without that window.
int AKGUIWindowProgress(unsigned int command, double fraction, const AKString& text);
