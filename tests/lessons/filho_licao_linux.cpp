#include "filho_licao.h"

#include "platform/linux/busdirectory.h"
#include "platform/linux/frame.h"
#include "platform/protocolo.h"

#include <cstdlib>
#include <sys/socket.h>

using namespace quorel;

void teste::dieHalfSent(Janela shell, Janela sender, const QByteArray &answer)
{
    const bus::UnixFd raw = bus::BusDirectory().connect(bus::processOf(shell)).socket;
    for (quint32 number = 1; number <= 2; ++number) {
        const auto head = bus::encode(bus::SendHead{number, MSG_PROXIMA, shell, sender, qint32(answer.size())});
        const QByteArray frame = QByteArray(head.data(), qsizetype(head.size())).append(answer);
        const qsizetype half = frame.size() - answer.size() / 2;
        ::send(raw.get(), frame.constData(), std::size_t(number == 1 ? frame.size() : half), MSG_NOSIGNAL);
    }
    std::_Exit(4);
}
