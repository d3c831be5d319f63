#!/bin/bash
# What takes too long for every run, in full: 1,000 programs killed while they log, keep and deliver; 6 programs of 200
# rows each while the register is copied and checked, with pages read 0.5 ms late; every call to the disk failing in
# turn. Needs build/debug built. Prints what was counted.
set -euo pipefail
cd "$(dirname "$0")/.."
export QUOREL_CARGA_LONGA=1 QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8 QTEST_FUNCTION_TIMEOUT=3600000
for teste in tst_carga tst_falhas; do
    tests/support/em_casa_propria.sh build/debug/tests/$teste
done
