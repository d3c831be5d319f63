#include "cenario.h"

#include "catalogue/catalogo.h"
#include "catalogue/estado.h"
#include "catalogue/vistas.h"
#include "lessons/andamento.h"
#include "lessons/vista_blocos.h"
#include "platform/codec.h"
#include "platform/costuras.h"
#include "platform/fim.h"
#include "shell/estado.h"
#include "startup/estado.h"
#include "startup/quorel_zeto.h"

#include <QAbstractButton>
#include <QDir>
#include <QImage>
#include <QLabel>

namespace quorel::teste {

using namespace Qt::StringLiterals;

QString noWindows(const QString &resto)
{
    return QDir::fromNativeSeparators(qEnvironmentVariable("QUOREL_WINDIR")) + u'/' + resto;
}

QByteArray textoBloco(const QString &tema, const QString &objetivo, const QList<int> &codigos)
{
    QString texto = u"<TM>%1</TM>\r\n<OBJ>%2</OBJ>\r\n"_s.arg(tema, objetivo);
    for (qsizetype i = 0; i < codigos.size(); ++i) {
        texto += u"[ROT<%1>]\r\nNomeRot =Roteiro %1\r\nCODROT:%2\r\nFIG:figura\r\nSOM:\r\n"
                 "<DESC>Descrição %1</DESC>\r\nNIVEL:F1\r\nDISC:MA\r\n"
                 "[<%1>1]\r\nNome =Aula\r\nLinha =(1,1)%2<SPÇ>1\r\n\tTipo = Zeto\t\r\n"_s.arg(i + 1)
                     .arg(codigos[i]);
    }
    return encode1252(texto);
}

static void instala(int meses)
{
    QDir(noWindows(u"QUOREL2001"_s)).removeRecursively();
    const QString blocos = noWindows(u"QUOREL2001/DBBLOCOS/F1/"_s);
    escreve(blocos + u"0124MAF1.EDB"_s, textoBloco(u"Números & cores"_s, u"Contar até 10"_s, {261, 12610, 7}));
    escreve(blocos + u"0124POF1.EDB"_s, textoBloco(u"Números & cores"_s, QString(), {31}));
    for (int mes = 2; mes <= meses; ++mes)
        escreve(blocos + u"%124CIF1.EDB"_s.arg(mes, 2, 10, QChar(u'0')),
            textoBloco(u"O tema de um mês que não cabe na largura do painel"_s, u"Observar"_s, {500 + mes}));
    const QString figura = noWindows(u"QUOREL2001/zeto_mm/Fig/f/r/figura.gif"_s);
    QDir().mkpath(noWindows(u"QUOREL2001/zeto_mm/Fig/f/r"_s));
    QImage imagem(60, 40, QImage::Format_RGB32);
    imagem.fill(Qt::darkGreen);
    imagem.save(figura, "PNG");
}

static void configura(bool escolas)
{
    gConfig.SetaCFG(u"[zeto]\r\nZETO_EXE=%1\\exe\r\nZETO_MM=%1\\zeto_mm\r\nDIRQUOREL=%1\r\nDBBLOCOS=%1\\DBBLOCOS"_s.arg(
        barras(noWindows(u"QUOREL2001"_s))));
    gNivel = u"F1"_s;
    gNomeNivel = u"Fundamental I"_s;
    gEscolas = escolas;
}

Cenario::Cenario(int meses, const QStringList &arquivos, bool escolas)
{
    failOnWarnings();
    reiniciaStartup();
    reiniciaCatalogue();
    reiniciaLessons();
    reiniciaShell();
    reiniciaFim();
    instala(meses);
    for (const QString &arquivo : arquivos)
        escreve(noWindows(u"QUOREL2001/"_s + arquivo), "x");
    configura(escolas);
    mJanelas = std::make_unique<Janelas>(Aberturas{[this] { ++alunos; }, [this] { ++desempenhos; }});
    usaVistas({&blocos(), &blocos(), &painel()});
    setVistaBlocos(&blocos());
    MontaCatalogo();
    blocos().carrega();
    principal().acertaBotao();
    principal().mostra();
    principal().activateWindow(); // the display of the tests activates each window that is shown
}

Cenario::~Cenario()
{
    reiniciaCatalogue();
    reiniciaLessons();
    reiniciaCosturas();
}

QWidget &Cenario::controle(const QString &nome)
{
    for (QWidget *janela : std::initializer_list<QWidget *>{&principal(), &blocos()}) {
        if (auto *found = janela->findChild<QWidget *>(nome))
            return *found;
    }
    return child<QWidget>(painel(), nome);
}

void Cenario::clica(const QString &nome)
{
    QWidget &alvo = controle(nome);
    if (alvo.isVisible())
        QTest::mouseClick(&alvo, Qt::LeftButton);
    else
        static_cast<QAbstractButton &>(alvo).click();
}

void Cenario::abreMatematica()
{
    clica(u"ImgBloco(9)"_s);
    QVERIFY(blocos().isVisible());
}

QString Cenario::roteiros()
{
    QStringList numeros;
    for (int i = 1; i <= 16; ++i) {
        if (!blocos().botao(i).isHidden())
            numeros << QString::number(i);
    }
    return numeros.join(u' ');
}

QString Cenario::tituloBlocos()
{
    return child<QLabel>(blocos(), u"LblTitulo"_s).text();
}

} // namespace quorel::teste
