#include "apoio.h"

#include "support/table.h"

using namespace Qt::StringLiterals;
using namespace quorel;
using namespace quorel::teste;

static const QString kNoRecord = u"Não há registro atual: BOF ou EOF é verdadeiro, ou o registro atual foi excluído."_s;
static const QString kNoField = u"O item não foi encontrado na coleção com o nome ou número pedido./%1"
                                "O nome do campo não esta na tabela !!!"_s;
static const QString kAsked = u"? Deletar Registro: Deseja apagar o registro atual"_s;
static const QString kGone = u"O registro não existe mais no banco de dados; nada foi gravado."_s;

/// Moving, reading, searching and changing through BD: exactly the guards that windows rely on, what is told of a
/// failure and what that leaves behind.
class TstBdRegistros final : public TesteBD
{
    Q_OBJECT
private slots:
    void init();
    void moves_data();
    void moves() { plays(); }
    void gives_data();
    void gives() { plays(); }
    void searches_data();
    void searches() { plays(); }
    void changes_data();
    void changes() { plays(); }
};

void TstBdRegistros::init()
{
    TesteBD::init();
    gBD->Records_Set(u"Select * From AL_Alunos"_s, u"vazio"_s);
    gBD->Records_Set(u"Select 1 as A union all Select 2"_s, u"outra"_s);
}

void TstBdRegistros::moves_data()
{
    rows<QString, QString>({
        {"on", "MoveProximoRegistro", "2/3 0 b"},
        {"past the last", "last; MoveProximoRegistro", "EOF -3/3 0 3021"},
        {"past it again: nothing", "end; MoveProximoRegistro", "EOF -3/3 0 3021"},
        {"back from there", "end; MoveRegistroAnterior", "3/3 0 c"},
        {"before the first", "MoveRegistroAnterior", "BOF -2/3 0 3021"},
        {"before it again: nothing", "previous; MoveRegistroAnterior", "BOF -2/3 0 3021"},
        {"on from there", "previous; MoveProximoRegistro", "1/3 0 a"},
        {"first from behind the end", "end; MoveParaComecoDeArquivo", "1/3 0 a"},
        {"last from before the beginning", "previous; MoveParaFimDeArquivo", "3/3 0 c"},
        {"on in nothing", "filter CL_Cod>9; MoveProximoRegistro", "BOF EOF -1/0 0 3021"},
        {"back in nothing", "filter CL_Cod>9; MoveRegistroAnterior", "BOF EOF -1/0 0 3021"},
        {"first of nothing", "filter CL_Cod>9; MoveParaComecoDeArquivo", "BOF EOF -1/0 0 3021"},
        {"last of nothing", "filter CL_Cod>9; MoveParaFimDeArquivo", "BOF EOF -1/0 0 3021"},
        {"off a deleted one", "next; remove; MoveProximoRegistro", "2/2 0 c; file 1a 3c"},
        {"off an added one", "add; MoveRegistroAnterior", "3/4 2 c"},
        {"an edit is saved", "name z; MoveProximoRegistro", "2/3 0 b; file 1z 2b 3c"},
        {"an edit that can't be saved is told and dropped",
            "name z; file DELETE FROM CL_Classes WHERE CL_Cod = 1; MoveProximoRegistro",
            "1/3 0 a; told i RS - : " + kGone + "; file 2b 3c"},

        {"by some", "next; Mover 1 0", "3/3 0 c"},
        {"by some from the first", "next; Mover 1 1", "2/3 0 b"},
        {"by some from the last", "next; Mover 1 2", "EOF -3/3 0 3021"},
        {"by some from a bookmark", "next; Mover 1 3", "EOF -3/3 0 3021"},
        {"by none", "next; Mover 0 1", "2/3 0 b"},
        {"backwards: not at all", "next; Mover -1 0", "2/3 0 b"},
        {"by some behind the end", "end; Mover 1 0", "EOF -3/3 0 3021; told i RS - Mover: " + kNoRecord},

        {"marked", "next; MarcaPosicao", "2/3 0 b; gives true"},
        {"no mark behind the end", "end; MarcaPosicao", "EOF -3/3 0 3021; gives false"},
        {"to no mark yet: the first", "last; VoltaPosicao", "1/3 0 a"},
        {"to the mark", "next; MarcaPosicao; end; MarcaPosicao; VoltaPosicao", "2/3 0 b"},
        {"one mark for all tables", "last; MarcaPosicao; alias outra; MoveProximoRegistro; VoltaPosicao; Posicao",
            "3/3 0 c; gives 1 1 2"}, // which has no such row
        {"to a mark that is filtered out", "next; MarcaPosicao; filter CL_Cod<>2; VoltaPosicao", "1/2 0 a"},
    });
}

void TstBdRegistros::gives_data()
{
    rows<QString, QString>({
        {"place", "last; Posicao", "3/3 0 c; gives 3 3 3"},
        {"place behind the last", "end; Posicao", "EOF -3/3 0 3021; gives -3 0 3 end"},
        {"place before the first", "previous; Posicao", "BOF -2/3 0 3021; gives -2 0 3 beginning"},
        {"place of one just added", "add; Posicao", "-1/4 2 Null; gives -1 0 4"},
        {"place of a deleted one", "remove; Posicao", "-1/2 4 3021; gives -1 0 2; file 2b 3c"},
        {"place when all are deleted", "remove all; Posicao", "-1/0 4 3021; gives -1 0 0 empty; file "},
        {"place, filtered", "filter CL_Cod>1; last; Posicao", "2/2 0 c; gives 2 2 2"},
        {"place, all filtered out", "filter CL_Cod>9; Posicao",
            "BOF EOF -1/0 0 3021; gives -1 0 0 end beginning none empty"},

        {"mode", "ModoEdicao", "1/3 0 a; gives 0"},
        {"mode of an edit", "name z; ModoEdicao", "1/3 1 z; gives 1"},
        {"mode of an edit read again for the batch", "name z; resync; ModoEdicao", "1/3 0 z; gives 0"},
        {"mode of one added", "add; ModoEdicao", "-1/4 2 Null; gives 2"},
        {"also elsewhere", "add; first; ModoEdicao", "1/4 2 a; gives 2"},
        {"but not off the records", "add; end; ModoEdicao", "EOF -3/4 2 3021"},
        {"mode of one deleted", "remove; ModoEdicao", "-1/2 4 3021; gives 4; file 2b 3c"},
        {"mode behind the last: nothing", "end; ModoEdicao", "EOF -3/3 0 3021"},
        {"mode before the first: nothing", "previous; ModoEdicao", "BOF -2/3 0 3021"},

        {"a field", "Campo cl_nome", "1/3 0 a; gives a"},
        {"a field behind the end", "end; Campo CL_Nome", "EOF -3/3 0 3021; gives "},
        {"before the first", "previous; Campo CL_Nome", "BOF -2/3 0 3021; gives "},
        {"of no records", "filter CL_Cod>9; Campo CL_Nome", "BOF EOF -1/0 0 3021; gives "},
        {"of one just added", "add; Campo CL_Nome", "-1/4 2 Null; gives "},
        {"of a deleted one: nothing", "remove; Campo CL_Nome",
            "-1/2 4 3021; told i RS - Campo: " + kNoRecord + "; file 2b 3c"},
        {"no such field: the edit is dropped", "name z; Campo AL_Nome",
            "1/3 0 a; told ! RS - Campo: " + kNoField.arg(u"Campo (AL_Nome)/"_s)},

        {"a list of two fields; it ends where it began", "next; lista CL_Cod CL_Prof", "2/3 0 b; gives 1-x;2-x;3-y"},
        {"by name, from behind the end", "end; lista cl_nome", "EOF -3/3 0 3021; gives a;b;c"},
        {"by number", "filter CL_Cod>1; last; lista 1", "2/2 0 c; gives b;c"},
        {"of all fields, Null empty", "file UPDATE CL_Classes SET CL_Prof = NULL; requery; lista",
            "1/3 0 a; gives 1-a---;2-b---;3-c---"},
        {"of all: the second field alone counts for nothing", "lista  CL_Nome",
            "1/3 0 a; gives 1-a-x--;2-b-x--;3-c-y--"},
        {"of nothing", "filter CL_Cod>9; lista CL_Nome", "BOF EOF -1/0 0 3021; gives "},
        {"of a field that is not there", "lista AL_Nome", "1/3 0 a; fails 3265"},

        {"a field's name", "NomeCampo 0", "1/3 0 a; gives CL_Cod"},
        {"all of them", "NomeCampo -1", "1/3 0 a; gives CL_Cod,CL_Nome,CL_Prof,CL_Senha"},
        {"no such field", "NomeCampo 4", "1/3 0 a; fails 3265"},
        {"nor such a number", "NomeCampo -2", "1/3 0 a; fails 3265"},

        {"a record as text", "next; RetornaRegistroString 1", "3/3 0 c; gives 2,b,x,;"},
        {"all from there on", "next; RetornaRegistroString 0", "EOF -3/3 0 3021; gives 2,b,x,;3,c,y,;"},
        {"behind the end: nothing", "end; RetornaRegistroString 0", "EOF -3/3 0 3021; told i RS - Mover: " + kNoRecord},
    });
}

void TstBdRegistros::searches_data()
{
    rows<QString, QString>({
        {"a hit", "Pesquisa CL_Cod = 3", "3/3 0 c; gives 3"},
        {"the first of two, case ignored", "last; Pesquisa CL_Prof='X'", "1/3 0 a; gives 1"},
        {"from behind the end", "end; Pesquisa CL_Cod=1", "1/3 0 a; gives 1"},
        {"from before the beginning", "previous; Pesquisa CL_Cod=1", "1/3 0 a; gives 1"},
        {"a miss leaves it behind the end", "Pesquisa CL_Cod=9", "EOF -3/3 0 3021; gives "},
        {"an empty criterion moves nothing", "last; Pesquisa ", "3/3 0 c; gives "},
        {"nothing behind the equals sign: the first", "last; Pesquisa CL_Cod=", "1/3 0 a; gives "},
        {"blanks behind it", "last; Pesquisa CL_Cod=   ", "1/3 0 a; gives "},
        {"no equals sign is no search", "last; Pesquisa CL_Cod > 1", "1/3 0 a; gives "},
        {"a field of it", "Acha cl_prof CL_Cod=2", "2/3 0 b; gives CL_COD=2: x"},
        {"by number", "Acha 0 cl_cod=2", "2/3 0 b; gives CL_COD=2: 2"},
        {"all of them", "Acha -1 CL_Cod=2", "2/3 0 b; gives CL_COD=2: 2\tb\tx\t\t"},
        {"an empty one", "Acha CL_Senha CL_Cod=2", "2/3 0 b; gives CL_COD=2: "},
        {"none", "Acha  CL_Cod=2", "2/3 0 b; gives CL_COD=2: "},
        {"the criterion is left in upper case", "Acha 0 cl_nome='ção ß ÿ'",
            "EOF -3/3 0 3021; gives CL_NOME='ÇÃO ß Ÿ': "},
        {"also in an empty set", "filter CL_Cod=9; Acha 0 ção", "BOF EOF -1/0 0 3021; gives ÇÃO: "},
        {"at least", "Pesquisa CL_Cod >= 3", "3/3 0 c; gives 3"},
        {"like", "Pesquisa cl_nome like b*", "2/3 0 b; gives 2"},
        {"a deleted row is not found", "remove; Pesquisa CL_Prof='x'", "1/2 0 b; gives 2; file 2b 3c"},
        {"nor a filtered one", "filter CL_Cod<>1; Pesquisa CL_Prof='x'", "1/2 0 b; gives 2"},
        {"a row just added is", "add d; update; first; Pesquisa CL_Nome='d'", "4/4 0 d; gives 4; file 1a 2b 3c 4d"},
        {"no such column", "Pesquisa AL_Cod=1", "1/3 0 a; gives ; told ! RS - Pesquisa: " + kNoField.arg(u""_s)},
        {"in nothing no criterion is read", "filter CL_Cod=9; Pesquisa x", "BOF EOF -1/0 0 3021; gives "},

        {"an edit is lost", "name z; Pesquisa CL_Nome='a'", "1/3 0 a; gives 1"},
        {"also when nothing is searched for", "name z; Pesquisa CL_Cod=", "1/3 0 a; gives "},
        {"an empty criterion keeps it", "name z; Pesquisa ", "1/3 1 z; gives "},
        {"an added record stays pending", "add d; Pesquisa CL_Cod=3", "3/4 2 c; gives 3"},
        {"and is not found", "add d; Pesquisa CL_Nome='d'", "EOF -3/4 2 3021; gives "},
        {"one added to nothing: nothing to find or tell", "filter CL_Cod=9; add; Pesquisa CL_Cod=1",
            "BOF EOF -1/1 2 3021; gives "},

        {"going on", "LocalizarProxima CL_Prof='x'", "2/3 0 b; gives 2"},
        {"going on to nothing", "next; LocalizarProxima CL_Prof='x'", "EOF -3/3 0 3021; gives "},
        {"going on, an edit is lost", "name z; LocalizarProxima CL_Prof='x'", "2/3 0 b; gives 2"},
        {"going on with no search", "last; LocalizarProxima CL_Cod=", "3/3 0 c; gives "},
        {"going on in nothing", "filter CL_Cod=9; LocalizarProxima x", "BOF EOF -1/0 0 3021; gives "},
        {"going on behind the end", "end; LocalizarProxima CL_Cod=1", "EOF -3/3 0 3021; fails 3021"},
        {"going on, no criterion", "LocalizarProxima CL_Cod=x", "2/3 0 b; fails 3001"},
        {"going on, no column", "LocalizarProxima AL_Cod=1", "2/3 0 b; fails 3265"},

        {"a filter goes to the first", "last; Filtro CL_Cod>1", "1/2 0 b"},
        {"a filter in place of another", "filter CL_Cod=1; Filtro CL_Cod=3", "1/1 0 c"},
        {"no filter", "filter CL_Cod=3; Filtro ", "1/3 0 a"},
        {"a filter that lets nothing through", "Filtro CL_Cod=9", "BOF EOF -1/0 0 3021"},
        {"none after that", "filter CL_Cod=9; Filtro ", "1/3 0 a"},
        {"another after that", "filter CL_Cod=9; Filtro CL_Cod=2", "1/1 0 b"},
        {"an empty alias filters nothing", "alias ; Filtro CL_Cod=3", "1/3 0 a"},
        {"nor does it clear a filter", "filter CL_Cod=3; alias ; Filtro ", "1/1 0 c"},
        {"a filter on no column", "Filtro AL_Cod=1", "1/3 0 a; fails 3265"},
        {"a filter on an empty table is not read", "remove all; requery; Filtro x", "BOF EOF -1/0 0 3021; file "},
        {"a filter keeps an added record pending", "add; Filtro CL_Cod=1", "1/2 2 a"},
        {"an order that is none", "Sort CL_Nome UP", "1/3 0 a; told ! RS - Sort: O critério não pôde ser entendido."},
    });
}

void TstBdRegistros::changes_data()
{
    rows<QString, QString>({
        {"added, pending through moves, written",
            "last; RegistroAdiciona; RegistroTroca CL_Nome=d; MoveParaComecoDeArquivo; RegistroTroca CL_Prof=z; "
            "RegistroAtualiza; ReAtualizaRecordSet",
            "1/4 0 a; file 1a 2b 3c 4d"},
        {"added, off the records, written", "add d; end; RegistroAtualiza", "EOF -3/4 0 3021; file 1a 2b 3c 4d"},
        {"added with a key that is there: nothing stays", "RegistroAdiciona; RegistroTroca CL_Cod=2; RegistroAtualiza",
            "1/3 0 a; told i RS - Registro Atualiza: "
            "O valor repete uma chave ou fere uma regra da tabela; nada foi gravado."},
        {"added to nothing, cancelled: the mark is left alone",
            "next; MarcaPosicao; alias vazio; RegistroAdiciona; CancelaAdicao; alias RS; VoltaPosicao", "2/3 0 b"},
        {"added to nothing: it is read again first",
            "file INSERT INTO AL_Alunos VALUES (5, 'Ana'); alias vazio; RegistroAdiciona; Posicao",
            "1/3 0 a; gives -1 0 2"},
        {"and cancelled",
            "file INSERT INTO AL_Alunos VALUES (5, 'Ana'); alias vazio; RegistroAdiciona; CancelaAdicao; Campo AL_Nome",
            "1/3 0 a; gives Ana"},
        {"added, cancelled: where it stood", "next; RegistroAdiciona; CancelaAdicao", "2/3 0 b"},
        {"after moves too", "next; RegistroAdiciona; last; CancelaAdicao", "2/3 0 b"},
        {"after a search that missed", "next; RegistroAdiciona; find CL_Cod=9; CancelaAdicao", "2/3 0 b"},
        {"begun off the records, no mark yet: the first", "end; RegistroAdiciona; CancelaAdicao", "1/3 0 a"},
        {"nothing added, cancelled: nothing", "last; CancelaAdicao", "3/3 0 c"},
        {"added, cancelled as an edit: nothing", "RegistroAdiciona; CancelaEdicao", "-1/4 2 Null"},
        {"edited, cancelled as an addition: nothing", "name z; CancelaAdicao", "1/3 1 z"},
        {"edited, cancelled: at the mark", "next; MarcaPosicao; next; name z; CancelaEdicao", "2/3 0 b"},
        {"edited, a value that does not fit: the edit is dropped", "name z; RegistroTroca CL_Cod=x",
            "1/3 0 a; told ! RS - : O valor não é adequado para o campo."},
        {"assigned to no field: the description of its own is never seen", "RegistroTroca Nada=1",
            "1/3 0 a; told ! RS - : " + kNoField.arg(u""_s)},
        {"edited, written", "next; name z; RegistroAtualiza", "2/3 0 z; file 1a 2z 3c"},
        {"edited: the other columns are read again first",
            "name z; file UPDATE CL_Classes SET CL_Nome = 'o', CL_Prof = 'p' WHERE CL_Cod = 1; RegistroAtualiza; "
            "Campo CL_Prof",
            "1/3 0 z; gives p; file 1z 2b 3c"},
        {"edited, but it is gone; told by its slot",
            "next; name z; file DELETE FROM CL_Classes WHERE CL_Cod = 2; RegistroAtualiza",
            "2/3 0 b; told i 1 - : " + kGone + "; file 1a 3c"},
        {"edited and read again, then another failure: no edit is left",
            "name z; resync; RegistroTroca Nada=1; ReAtualizaRecordSet",
            "1/3 0 a; told ! RS - : " + kNoField.arg(u""_s)},
        {"nothing to write", "next; RegistroAtualiza", "2/3 0 b"},
        {"nothing to write, off the records", "end; RegistroAtualiza", "EOF -3/3 0 3021"},
        {"nothing to write, deleted", "remove; RegistroAtualiza", "-1/2 4 3021; file 2b 3c"},
        {"deleted unasked: stays on it", "next; RegistroApaga", "-1/2 4 3021; file 1a 3c"},
        {"deleted unasked, an added one", "next; add d; RegistroApaga", "2/3 0 b"},
        {"deleted on asking: moves on", "next; RegistroApaga pergunta", "2/2 0 c; told " + kAsked + "; file 1a 3c"},
        {"on the last: moves off", "last; RegistroApaga pergunta", "EOF -3/2 0 3021; told " + kAsked + "; file 1a 2b"},
        {"on the only one shown", "filter CL_Cod=2; RegistroApaga pergunta",
            "BOF EOF -1/0 0 3021; told " + kAsked + "; file 1a 3c"},
        {"deleted, but it is gone", "next; file DELETE FROM CL_Classes WHERE CL_Cod = 2; RegistroApaga",
            "2/3 0 b; told i RS - RegistroApaga: " + kGone + "; file 1a 3c"},
        {"read again: at the first, the filter stays",
            "Filtro CL_Cod>1; last; file INSERT INTO CL_Classes (CL_Nome) VALUES ('d'); ReAtualizaRecordSet",
            "1/3 0 b; file 1a 2b 3c 4d"},
        {"read again while editing: the edit is dropped", "name z; ReAtualizaRecordSet",
            "1/3 0 a; told i RS - Registro reAtualizaRecordSet: A operação não é permitida neste contexto."},
    });
}

QTEST_MAIN(TstBdRegistros)
#include "tst_bd_registros.moc"
