#!/usr/bin/env bash
# The main job: the component at work on the embedded SQLite demo database. With a display
# it opens the demo host window; without one it walks through a contact selection, a
# property selection and a cross-match in each direction on the command line.
# Usage: scripts/demo.sh BUILD_DIR. Creates demo.db beside the build output when missing.
set -euo pipefail
build=${1:-build}
tool="$build/cli/criteriopredios"
window="$build/qt/demo/criteriopredios-demo"
db="$build/demo.db"
if [ ! -f "$db" ]; then
  "$tool" init-db --db "$db" --demo --size 2000
fi

if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ] && [ -x "$window" ]; then
  echo "Abriendo la ventana de demostración sobre $db ..."
  exec "$window" --db "$db"
fi

section() { printf '\n== %s ==\n' "$1"; }
# Reads everything it is given, so the tool never writes into a closed pipe (pipefail).
first_rows() { sed -n "1,${1:-6}p" | cut -c1-160; }

section "Clientes cuyo apellido empieza por «garcía», dados de alta desde el 1/3/2020"
"$tool" query where --db "$db" --entity Clientes \
  --set 'dtpAlta(0)=2020-03-01' --set 'txtPalabras=garcía' \
  --set 'cboOpPalabras=Al principio' --set 'cboEn=Apellido' | first_rows

section "Inmuebles propios en España con al menos 3 huecos, amueblados"
"$tool" query where --db "$db" --entity 'Inm. Propios' \
  --set 'txtPais=España' --set 'txtHuecos=3' --set 'chkAmueblado=1' | first_rows

# The first record of a side that crosses with something, so that each cross shows rows.
first_matching() {
  "$tool" match --db "$db" --from "$1" --limit 300 | awk -F'\t' 'NR > 1 && $2 > 0 && !id { id = $1 } END { print id }'
}
demand=$(first_matching Demandas)
section "Cruce: la demanda $demand contra los inmuebles propios"
"$tool" query cross --db "$db" --id "$demand" --from Demandas --to 'Inm. Propios' | first_rows

property=$(first_matching 'Inm. Propios')
section "Cruce: el inmueble propio $property contra las demandas"
"$tool" query cross --db "$db" --id "$property" --from 'Inm. Propios' --to Demandas | first_rows

printf '\nMás: %s --help (where, cross, query, sql, translate, init-db).\n' "$tool"
printf '\nNo hay pantalla ($DISPLAY): ésta ha sido la versión de línea de órdenes.\n'
printf 'La ventana: en un escritorio, make demo; sin él, una imagen del diálogo con\n'
printf '  xvfb-run -a %s --db %s --screenshot dialogo.png --entity Clientes\n' "$window" "$db"
printf 'y las de docs/ (README, «Capturas»).\n'
