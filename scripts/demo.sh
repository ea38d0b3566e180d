#!/usr/bin/env bash
# The main job: a walkthrough of the component on the embedded SQLite demo database.
# Usage: scripts/demo.sh BUILD_DIR. Creates demo.db beside the build output when missing.
set -euo pipefail
build=${1:-build}
tool="$build/cli/criteriopredios"
db="$build/demo.db"
if [ ! -f "$db" ]; then
  "$tool" init-db --db "$db" --demo --size 2000
fi

section() { printf '\n== %s ==\n' "$1"; }
first_rows() { head -n "${1:-6}" | cut -c1-160; }

section "Clientes cuyo apellido empieza por «garcía», dados de alta desde el 1/3/2020"
"$tool" query where --db "$db" --entity Clientes \
  --set 'dtpAlta(0)=2020-03-01' --set 'txtPalabras=garcía' \
  --set 'cboOpPalabras=Al principio' --set 'cboEn=Apellido' | first_rows

section "Inmuebles propios en España con al menos 3 huecos, amueblados"
"$tool" query where --db "$db" --entity 'Inm. Propios' \
  --set 'txtPais=España' --set 'txtHuecos=3' --set 'chkAmueblado=1' | first_rows

section "Cruce: la demanda 1 contra los inmuebles propios"
"$tool" query cross --db "$db" --id 1 --from Demandas --to 'Inm. Propios' | first_rows

printf '\nMás: %s --help (where, cross, query, sql, translate, init-db).\n' "$tool"
