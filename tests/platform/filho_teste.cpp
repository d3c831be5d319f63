// A child for tests: does what the code of a message asks for.
//   filho_teste TITLE [INNER TITLE]    on the bus
//   filho_teste --fora TITLE           only a window, of a program that knows nothing of the bus
//   filho_teste --fora-na-moldura TITLE    the same, placed by its frame and not by what is in it
#include "platform/endereco.h"
#include "platform/eventos.h"
#include "platform/fim.h"
#include "platform/preparo.h"
#include "platform/programas.h"

#include "filho_teste.h"

#include <QApplication>
#include <QThread>
#include <QTimer>

#include <unistd.h>

#include <cstdio>
#include <stdexcept>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

/// ms between its two windows: longer than a shell that waits for it takes to look again.
static constexpr int kSlow = 30;

static Endereco *gEndereco = nullptr;
static QWidget *gCorpo = nullptr;

static void tell(const char *what)
{
    std::fputs(what, stdout);
}

static void endInOrder()
{
    beforeEnd([] {
        tell(findWindow(QApplication::arguments().value(1), false) == gEndereco->handle() ? "reachable," : "gone,");
    });
    beforeEnd([] { throw std::runtime_error("passed over"); });
    beforeEnd([] { tell("second,"); });
    std::atexit([] { tell("handlers of the end,"); });
    encerraPrograma(kExitCode);
}

static qintptr answer(Janela shell, const CopyData &data)
{
    const QByteArrayView bytes(static_cast<const char *>(data.bytes), data.bytes ? qsizetype(data.size) : 0);
    const Janela me = gEndereco->handle();
    switch (data.code) {
    case kSizePlus1000:
        return qintptr(qint32(data.size)) + 1000;
    case kSendBack:
        return sendCopyData(shell, me, kSendBack, qint32(data.size), bytes) + 1;
    case kBounce: { // until the depth limit answers 0
        const qintptr deeper = sendCopyData(shell, me, kBounce, 0, {});
        return deeper + 1;
    }
    case kDie:
        ::_exit(3);
    case kHang:
        for (;;)
            ::pause();
    case kWithdrawAndHang:
        gEndereco->withdraw();
        for (;;)
            ::pause();
    case kEnd:
        QTimer::singleShot(0, qApp, endInOrder);
        return 1;
    case kSetTitle:
        gEndereco->setTitle(QString::fromUtf8(bytes));
        return 1;
    case kGeometry:
        return packed({gCorpo->pos(), gCorpo->size()});
    case kIsTopmost:
        return gCorpo->windowFlags().testFlag(Qt::WindowStaysOnTopHint) ? 2 : 1;
    case kHide:
        gCorpo->hide();
        return 1;
    case kOpenDocument:
        return openDocumentNow({me, u"OPEN"_s, QString::fromUtf8(bytes), u"C:\\"_s}) ? 2 : 1;
    default:
        return 0;
    }
}

int main(int argc, char **argv)
{
    preparePlatform();
    QApplication app(argc, argv);
    setSendLimit(0);
    const QStringList words = app.arguments();
    QWidget corpo;
    corpo.setMinimumSize(kLeast);
    corpo.setGeometry(kPlace);
    if (words.value(1) != "--fora"_L1)
        corpo.move(kPlace.topLeft());
    gCorpo = &corpo;
    if (words.value(1).startsWith("--fora"_L1))
        corpo.setWindowTitle(words.value(2));
    corpo.show();
    if (!corpo.windowTitle().isEmpty())
        return QApplication::exec();
    Endereco endereco(&corpo);
    gEndereco = &endereco;
    endereco.replaceProc([](Janela, quint32, quintptr sender, qintptr data) {
        return answer(sender, *reinterpret_cast<const CopyData *>(data));
    });
    if (words.size() > 2) {
        endereco.publishInner({words[2], &corpo});
        QThread::msleep(kSlow);
    }
    endereco.publish(words.value(1));
    return QApplication::exec();
}
