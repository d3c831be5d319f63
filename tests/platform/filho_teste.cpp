// A child for the tests of the bus: does what the code of a message asks for.
//   filho_teste TITLE [INNER TITLE]
#include "platform/endereco.h"
#include "platform/eventos.h"
#include "platform/linux/busdirectory.h"
#include "platform/linux/frame.h"
#include "platform/preparo.h"
#include "platform/programas.h"

#include "filho_teste.h"

#include <QApplication>

#include <sys/socket.h>
#include <unistd.h>

#include <csignal>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

static constexpr int kFlood = 3000;
static constexpr QSize kLeast{120, 80};
static constexpr QRect kPlace{300, 200, 400, 300};

static Endereco *gEndereco = nullptr;
static QWidget *gCorpo = nullptr;
static bus::UnixFd gFlood;

/// Sends of which nobody waits for the answers, as no honest child would.
static qintptr flood(Janela shell)
{
    gFlood = bus::BusDirectory().connect(bus::processOf(shell)).socket;
    for (quint32 i = 0; i < kFlood; ++i) {
        const auto frame = bus::encode(bus::SendHead{i + 1, kFloodDrop, shell, gEndereco->handle(), 0});
        if (::send(gFlood.get(), frame.data(), frame.size(), MSG_NOSIGNAL | MSG_DONTWAIT) < 0)
            return qintptr(i);
    }
    return kFlood;
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
    case kSetTitle:
        gEndereco->setTitle(QString::fromUtf8(bytes));
        return 1;
    case kSendFlood:
        return flood(shell);
    case kGeometry:
        return qintptr(gCorpo->x()) << 48 | qintptr(gCorpo->y()) << 32 | qintptr(gCorpo->width()) << 16
            | qintptr(gCorpo->height());
    case kIsTopmost:
        return gCorpo->windowFlags().testFlag(Qt::WindowStaysOnTopHint) ? 2 : 1;
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
    corpo.move(kPlace.topLeft());
    corpo.resize(kPlace.size());
    corpo.show();
    gCorpo = &corpo;
    Endereco endereco(&corpo);
    gEndereco = &endereco;
    endereco.replaceProc([](Janela, quint32, quintptr sender, qintptr data) {
        return answer(sender, *reinterpret_cast<const CopyData *>(data));
    });
    endereco.publish(words.value(1));
    if (words.size() > 2)
        endereco.publishInner(words[2], &corpo);
    return QApplication::exec();
}
