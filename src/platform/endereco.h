#pragma once

#include "platform/janela.h"

#include <QByteArrayView>
#include <QString>

#include <chrono>
#include <functional>
#include <memory>

namespace quorel {

/// What a window procedure is given with kCopyData: its second parameter is the sender's handle, its third the address
/// of this record, valid during the call only. The system's own layout on Windows.
struct CopyData
{
    quintptr code; ///< the message code, 32 bits used
    quint32 size; ///< characters + 1 by convention; whatever the sender said, checked against what came
    const void *bytes; ///< `size` bytes of code page 1252, normally NUL-terminated; null when size is 0
};

/// The window message that carries a CopyData.
inline constexpr quint32 kCopyData = 74;

/// Largest size of a CopyData: the receivers' buffers, 204800 bytes with the final NUL. Longer ones are refused by the
/// sender and dropped by the receiver.
inline constexpr quint32 kMaxCopyData = 204800;

/// A procedure that receives a window's messages: window, message number, two parameters; the result goes to the
/// sender, whose send counts as answered when it is not 0.
using WindowProc = std::function<qintptr(Janela, quint32, quintptr, qintptr)>;

/// Passes a message on to a procedure that was replaced; 0 when there was none.
qintptr callWindowProc(const WindowProc &proc, Janela janela, quint32 message, quintptr wParam, qintptr lParam);

/// A window inside another one, found and placed under a title of its own; none without a title.
struct Interna
{
    QString titulo;
    QWidget *corpo = nullptr;
};

/// A place in this process where other processes reach it: a window known by its title, with a procedure for messages.
/// On Windows a top-level window, invisible unless a body is given; on Linux an entry on the bus. Its handle is good
/// from the start, for use as a sender; found and reached it is from publish() to withdraw(). Needs a QApplication.
class Endereco final
{
    Q_DISABLE_COPY_MOVE(Endereco)
public:
    /// @param corpo  window that a placeWindow() of another process moves; null for an address without a body
    explicit Endereco(QWidget *corpo = nullptr);
    ~Endereco(); ///< withdraws

    Janela handle() const;

    /// Makes the address known under a title, together with its inner window: whoever looks for "Livros" must not meet
    /// "Livros - Quorel" alone. The procedure in force answers 1 to kCopyData until it is replaced.
    void publish(const QString &titulo, const Interna &interna = {});
    void setTitle(const QString &titulo); ///< of a published address
    /// Adds an inner window, a place of its own to be found by findWindow() and placed; its messages go to the same
    /// procedure. @return its handle
    Janela publishInner(const Interna &interna);
    /// From now on it is not found, and sends to its handle end with 0.
    void withdraw();

    /// Puts another procedure in the place of the one in force and gives back the old one.
    WindowProc replaceProc(WindowProc proc);

private:
    struct Dados;
    std::unique_ptr<Dados> d;
};

/// Sends a kCopyData and waits for the answer, as a synchronous call into the receiver: meanwhile sends that come in
/// are served, to any depth up to 500, and no user input is taken. To a window of this process it is a direct call of
/// the procedure.
/// @param size  travels as it is, apart from the bytes; at most as many bytes as that are read from `bytes`
/// @return the receiver's result; 0 when the handle is not (or no longer) an address, when the receiver dies, withdraws
///         or is silent for 5 s (an answer or a whole send ends the silence, other bytes don't; the time of our
///         procedures does not count; sends inside one another end after one such wait), when the size is over
///         kMaxCopyData, or at depth 500
qintptr sendCopyData(Janela destino, Janela remetente, quint32 code, qint32 size, QByteArrayView bytes);

/// Withdraws all addresses of the process and closes its connections; part of the end of the program.
void leaveBus();

/// How long sendCopyData() waits for a receiver that gives no sign of life. The shell's limit is the default; a child
/// program waits for its shell without limit (0 ms), until that dies.
void setSendLimit(int milliseconds);

/// Calls `gone` once, from the event loop, when the process that owns a window has died (on Linux also when it has
/// left the bus). Passed over for a handle of this process, or of none.
void watchOwner(Janela janela, std::function<void()> gone);

/// Handle of the titled, published window of the process that owns `janela` (a sender's handle), or 0.
/// Looked up anew at each call.
Janela publishedWindowOf(Janela janela, QStringView titulo);

/// The published window with that title of the process that started this one, or 0.
Janela publishedWindowOfParent(QStringView titulo);

/// Why other programs can't reach this process, as a sentence for the user; empty when they can. On Windows they can.
QString whyUnreachable();

bool sameProcess(Janela a, Janela b); ///< whether both belong to one, the same

/// What has become of an address of another process.
enum class Presence {
    Ended, ///< its process is gone, and all that it sent has been served
    Withdrawn, ///< its process lives, the address is no longer one
    Unseen, ///< no window of its process is on the screen, as far as the screen can be asked
    Seen,
};
Presence presenceOf(Janela janela);

/// Serves incoming sends, and nothing else, until the condition holds or the time is over; what has come by then is
/// served still. The condition is looked at every few milliseconds. @return whether it holds
bool serveSendsUntil(const std::function<bool()> &condition, std::chrono::milliseconds limit);

/// Answers the sends that are being served with 1 now: for a procedure that will not return. On Windows the latest one.
void releaseSenders();

} // namespace quorel
