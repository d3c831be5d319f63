#include "lessons/executa_aula.h"
#include "lessons/gancho.h"
#include "lessons/mensagens.h"
#include "lessons/programas_filhos.h"
#include "startup/estado.h"
#include "startup/quorel_zeto.h"
#include "support/suporte.h"

#include "vista_gravada.h"

#include <QDir>
#include <QTemporaryDir>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

static constexpr int kPatience = 30000; ///< ms

/// The launcher with the child of docs/protocolo.md in the place of a program.
class TstFilhoDaPagina final : public QObject
{
    Q_OBJECT
private slots:
    void theChildOfThePageLeadsThroughARoteiro();
};

void TstFilhoDaPagina::theChildOfThePageLeadsThroughARoteiro()
{
    failOnWarnings();
    const QTemporaryDir dir;
    QDir(dir.path()).mkdir(u"exe"_s);
    const QString zeto = dir.filePath(u"exe/Zeto.exe"_s);
    QVERIFY(QFile::copy(QStringLiteral(QUOREL_SOURCE "/docs/filho_exemplo.py"), zeto));
    QVERIFY(QFile::setPermissions(zeto, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    gConfig.SetaCFG("ZETO_EXE="_L1 + barras(dir.filePath(u"exe"_s)) + "\r\n"_L1);
    VistaGravada vista;
    InstalaGancho(janelaBlocos());
    gAluno = 9999;
    gClasse = 9999;
    umRoteiro({u"um"_s, u"dois"_s, u"três"_s}, u"Zeto"_s);
    iniciaRoteiro(1);
    QVERIFY(gJanelaZeto != 0);
    QTRY_VERIFY_WITH_TIMEOUT(!gEmRoteiro, kPatience);
    QCOMPARE(gAulaAtual, qint16(4));
    QCOMPARE(vista.largest, u"A:A:"_s);
    despedeFilhos();
    RemoveGancho();
}

QTEST_MAIN(TstFilhoDaPagina)
#include "tst_filho_da_pagina.moc"
