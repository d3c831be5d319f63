#include "platform/endereco.h"

#include "platform/eventos.h"
#include "platform/linux/bus.h"
#include "platform/linux/x11windows.h"

#include <algorithm>

namespace quorel {

using bus::Bus;
using namespace Qt::StringLiterals;

struct Endereco::Dados
{
    Janela handle = Bus::instance().windows().newHandle();
    QPointer<QWidget> body;
    std::shared_ptr<bus::Procedure> procedure = std::make_shared<bus::Procedure>();

    bus::OwnWindow inner(const Interna &interna) const
    {
        return {{Bus::instance().windows().newHandle(), handle, interna.titulo}, interna.corpo, procedure};
    }
};

static std::shared_ptr<WindowProc> shared(WindowProc proc)
{
    return std::make_shared<WindowProc>(std::move(proc));
}

Endereco::Endereco(QWidget *corpo) : d(std::make_unique<Dados>())
{
    d->body = corpo;
    d->procedure->inForce =
        shared([](Janela, quint32 message, quintptr, qintptr) { return qintptr(message == kCopyData); });
}

Endereco::~Endereco()
{
    withdraw();
}

Janela Endereco::handle() const
{
    return d->handle;
}

void Endereco::publish(const QString &titulo, const Interna &interna)
{
    if (Bus::instance().windows().contains(d->handle))
        return setTitle(titulo);
    std::vector<bus::OwnWindow> windows{{{d->handle, 0, titulo}, d->body, d->procedure}};
    if (!interna.titulo.isEmpty())
        windows.push_back(d->inner(interna));
    Bus::instance().publish(std::move(windows));
}

void Endereco::setTitle(const QString &titulo)
{
    Bus::instance().setTitle(d->handle, titulo);
}

Janela Endereco::publishInner(const Interna &interna)
{
    bus::OwnWindow window = d->inner(interna);
    const Janela handle = window.entry.handle;
    Bus::instance().publish({std::move(window)});
    return handle;
}

void Endereco::withdraw()
{
    Bus::instance().withdraw(d->handle);
}

WindowProc Endereco::replaceProc(WindowProc proc)
{
    // The old one may be running: it is copied, not taken away.
    return *std::exchange(d->procedure->inForce, shared(std::move(proc)));
}

qintptr sendCopyData(Janela destino, Janela remetente, quint32 code, qint32 size, QByteArrayView bytes)
{
    if (destino == 0 || size > qint32(kMaxCopyData))
        return 0;
    const bus::SendHead head{.code = code, .target = destino, .sender = remetente, .size = size};
    const qsizetype wanted = std::max(size, 0);
    if (bytes.size() >= wanted)
        return Bus::instance().send(head, bytes.first(wanted));
    // A size beyond the bytes given means the zeroed rest of a buffer.
    QByteArray padded = bytes.toByteArray();
    padded.resize(wanted, '\0');
    return Bus::instance().send(head, padded);
}

void leaveBus()
{
    Bus::instance().leave();
}

void setSendLimit(int milliseconds)
{
    Bus::instance().setSendLimit(milliseconds);
}

bool insideSend()
{
    return Bus::instance().insideSend();
}

void watchOwner(Janela janela, std::function<void()> gone)
{
    Bus::instance().watch(bus::processOf(janela), std::move(gone));
}

static Janela publishedBy(pid_t process, QStringView titulo)
{
    if (process <= 1)
        return 0;
    const auto titled = [&](const bus::Entry &entry) {
        return bus::processOf(entry.handle) == process && entry.parent == 0 && entry.title == titulo;
    };
    const auto own = Bus::instance().windows().entries();
    const auto &all = process == ::getpid() ? own : Bus::instance().entries();
    const auto found = std::ranges::find_if(all, titled);
    const Janela janela = found == all.end() ? 0 : found->handle;
    return janela != 0 && Bus::instance().isAlive(process) ? janela : 0;
}

Janela publishedWindowOf(Janela janela, QStringView titulo)
{
    return publishedBy(bus::processOf(janela), titulo);
}

Janela publishedWindowOfParent(QStringView titulo)
{
    return publishedBy(::getppid(), titulo);
}

QString whyUnreachable()
{
    if (Bus::instance().isReachable())
        return QString();
    return u"O Quorel e os programas de aula não conseguem falar um com o outro: o diretório %1 não pode ser usado. "
           u"Ele "
           u"precisa ser um diretório seu, em um disco com espaço livre. Peça ajuda a quem cuida desta máquina e abra "
           u"o "
           u"Quorel de novo."_s.arg(bus::BusDirectory::path());
}

bool sameProcess(Janela a, Janela b)
{
    return bus::processOf(a) != 0 && bus::processOf(a) == bus::processOf(b);
}

Presence presenceOf(Janela janela)
{
    const pid_t process = bus::processOf(janela);
    if (process == ::getpid())
        return Bus::instance().windows().contains(janela) ? Presence::Unseen : Presence::Withdrawn;
    if (Bus::instance().isDone(process))
        return Presence::Ended;
    const auto &all = Bus::instance().entries();
    if (std::ranges::find(all, janela, &bus::Entry::handle) == all.end())
        return Presence::Withdrawn;
    return x11::showsWindow(process) ? Presence::Seen : Presence::Unseen;
}

bool serveSendsUntil(const std::function<bool()> &condition, std::chrono::milliseconds limit)
{
    return Bus::instance().serveUntil(condition, limit);
}

void releaseSenders()
{
    Bus::instance().releaseSenders();
}

} // namespace quorel
