# The sample's register: made once, since lessons that were run leave their rows in it. It comes with four weeks of
# lessons already run, up to the day it is made.
if(EXISTS ${CADASTRO})
    return()
endif()
execute_process(COMMAND iconv -f UTF-8 -t CP1252 ${LISTA} OUTPUT_FILE ${CADASTRO}.lista COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${FERRAMENTA} cria ${CADASTRO} COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${FERRAMENTA} importa ${CADASTRO} ${CADASTRO}.lista COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${PYTHON} -B ${CMAKE_CURRENT_LIST_DIR}/historico.py ${CADASTRO} ${BLOCOS}
    ${FERRAMENTA_BLOCOS} COMMAND_ERROR_IS_FATAL ANY)
file(REMOVE ${CADASTRO}.lista)
