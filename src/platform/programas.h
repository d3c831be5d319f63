#pragma once

#include "platform/janela.h"

#include <QString>

namespace quorel {

/// A program to start.
struct ProgramRequest
{
    QString program; ///< native path of the file
    QString arguments; ///< the rest of the command line as it stands; no interpreter sees it. Linux: split at single
                       ///< blanks, those beyond one in a row stay with the word behind
    bool waitUntilReady = false; ///< return only when it takes messages, has ended, or after 30 s
};

/// Starts a program in a normal window; its output channels are forwarded. It outlives this process unless told to
/// end. While it waits, incoming sends are served and no user input is taken.
/// @return false when it could not be started
bool startProgramNow(const ProgramRequest &request);

enum class ShowMode : int { Minimized = 2, Maximized = 3, Normal = 5 };

/// A document, directory or address to open in the viewer that the system has for it.
struct DocumentRequest
{
    Janela owner = 0; ///< window that an error box of the system would belong to
    QString verb; ///< "OPEN"
    QString document; ///< path with backslashes, a name in `directory`, or an address
    QString directory; ///< working directory as the caller gives it, sense or not
    ShowMode show = ShowMode::Normal;
};

/// @return false when the system has no viewer for it or the document does not exist
bool openDocumentNow(const DocumentRequest &request);

} // namespace quorel
