#!/bin/bash
# Plays a teacher's visit on a virtual display, with several users: the warning of the internet button, the choice of a
# pupil, the password, the register of pupils and classes, the pupil's performance as chart, sheet and page. Leaves a
# picture of each window. Fails when one is not reached.
#   scripts/demonstra_professor.sh BUILD-DIR OUTPUT-DIR
. "$(dirname "$0")/visita_propria.sh" "$@"

# Without a network, so that the warning comes on every machine.
sem_rede=(unshare --map-root-user --net)
"${sem_rede[@]}" true || desiste "unshare não pode separar a rede neste sistema"
foto_da() { # foto_da NOME JANELA: the window with its frame, once its pointer rests and its tips are gone
    xdotool mousemove 1020 760
    sleep 1
    import -frame -window "$2" "$saida/$1.png" && echo "  $saida/$1.png"
}
escolhe() { # escolhe JANELA X Y: the first entry of the list that opens there
    clica "$1" "$2" "$3"
    sleep 0.5
    tecla Home Return
    sleep 0.5
}

echo "Visita de um professor ao nível F1:"
abre "${sem_rede[@]}" "$raiz/bin/quorel" /NIVEL:F1 /ESC:
painel=$(janela ' ')

clica "$painel" 154 470 # the globe
espera 10 visivel 'Blocos de Atividades'
foto_da internet "$(janela 'Blocos de Atividades')"
tecla Return
espera 10 visivel 'Conexão por rede DIAL-UP não encontrada'
tecla n
espera 10 some 'Conexão por rede DIAL-UP não encontrada'

clica "$painel" 66 470 # the notebook
espera 10 visivel 'Cadastros'
cadastros=$(janela 'Cadastros')
clica "$cadastros" 83 82 # Selecionar Aluno
escolhe "$cadastros" 454 79
escolhe "$cadastros" 454 136
clica "$cadastros" 399 190
espera 10 visivel 'Série: Fundamental I \| .*'
foto_da cadastro-selecao "$cadastros"

clica "$cadastros" 83 182 # Cadastrar Aluno
espera 10 visivel 'Login'
xdotool type amora
foto_da senha "$(janela 'Login')"
tecla Return
espera 10 some 'Login'
foto_da cadastro-alunos "$cadastros"
clica "$cadastros" 428 124 # Classes
foto_da cadastro-classes "$cadastros"

clica "$cadastros" 83 282 # Desempenho
espera 10 visivel 'Gráfico de Desempenho \| .*'
desempenho=$(janela 'Gráfico de Desempenho \| .*')
clica "$desempenho" 270 134 # Seleciona Todas
foto_da desempenho-grafico "$desempenho"
clica "$desempenho" 32 95 # Planilha
foto_da desempenho-planilha "$desempenho"
clica "$desempenho" 32 31 # the printer
foto_da desempenho-pagina "$desempenho"
clica "$desempenho" 92 31 # the door: back to the sheet
sleep 1
clica "$desempenho" 92 31 # and out
espera 10 some 'Gráfico de Desempenho \| .*'

clica "$cadastros" 75 500 # Fecha Histórico
espera 10 some 'Cadastros'
fecha
echo "Pronto: as imagens estão em $saida"
