#include "platform/postgres/jet_functions.h"

#include "platform/jetsql/literals.h"

namespace cp::postgres {
namespace {

// Text is folded as the embedded engine folds it: NFC (checked first: normalizing costs far
// more than checking, and stored text is nearly always NFC already), then ICU's lower().
// Classes compare code points as the embedded engine does, and an accented letter also
// matches by its base letter ('[a-n]' takes 'ñ'): the accented letters of Spanish and its
// neighbours are listed with their bases.
constexpr const char* kFunctions = R"SQL(
CREATE COLLATION pg_temp.jet_nocase (provider = icu, locale = 'und-u-ks-level2', deterministic = false);
CREATE FUNCTION pg_temp.jet_fold(t text) RETURNS text LANGUAGE sql IMMUTABLE PARALLEL SAFE
AS $$ SELECT lower(CASE WHEN t IS NFC NORMALIZED THEN t ELSE normalize(t, NFC) END
                  COLLATE "und-x-icu") $$;
CREATE FUNCTION pg_temp.jet_regex(pattern text, esc text) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $$
DECLARE
  p text := pg_temp.jet_fold(pattern);
  e text := left(pg_temp.jet_fold(esc), 1);
  accented constant text := 'àáâãäåçèéêëìíîïñòóôõöùúûüýÿ';
  bases constant text := 'aaaaaaceeeeiiiinooooouuuuyy';
  n int := length(p);
  i int := 1;
  k int;
  c text;
  body text;
  lo text;
  hi text;
  set_ text;
  negated boolean;
  rx text := '^';
BEGIN
  WHILE i <= n LOOP
    c := substr(p, i, 1);
    IF e <> '' AND c = e AND i < n THEN
      i := i + 1;
      c := substr(p, i, 1);
      rx := rx || CASE WHEN ascii(c) < 128 AND c !~ '[A-Za-z0-9]' THEN '\' ELSE '' END || c;
    ELSIF c = '*' THEN
      rx := rx || '.*';
    ELSIF c = '?' THEN
      rx := rx || '.';
    ELSIF c = '#' THEN
      rx := rx || '[0-9]';
    ELSIF c = '[' THEN
      k := strpos(substr(p, i + 1), ']');
      IF k = 0 THEN
        RAISE EXCEPTION 'Cadena de modelo no válida.' USING ERRCODE = '2201B';
      END IF;
      body := substr(p, i + 1, k - 1);
      i := i + k;
      IF body <> '' THEN
        negated := left(body, 1) = '!' AND length(body) > 1;
        IF negated THEN body := substr(body, 2); END IF;
        set_ := '';
        k := 1;
        WHILE k <= length(body) LOOP
          lo := substr(body, k, 1);
          hi := lo;
          IF k + 2 <= length(body) AND substr(body, k + 1, 1) = '-' THEN
            hi := substr(body, k + 2, 1);
            k := k + 2;
          END IF;
          k := k + 1;
          -- Code points, as the embedded engine compares them; accented letters match by their base.
          IF lo COLLATE "C" <= hi COLLATE "C" THEN
            set_ := set_ || CASE WHEN lo IN ('\', ']', '[', '^', '-') THEN '\' ELSE '' END || lo
                    || '-' || CASE WHEN hi IN ('\', ']', '[', '^', '-') THEN '\' ELSE '' END || hi;
            FOR j IN 1 .. length(accented) LOOP
              IF substr(bases, j, 1) COLLATE "C" >= lo AND substr(bases, j, 1) COLLATE "C" <= hi THEN
                set_ := set_ || substr(accented, j, 1);
              END IF;
            END LOOP;
          END IF;
        END LOOP;
        IF set_ = '' THEN
          rx := rx || CASE WHEN negated THEN '.' ELSE '(?!)' END;
        ELSE
          rx := rx || '[' || CASE WHEN negated THEN '^' ELSE '' END || set_ || ']';
        END IF;
      END IF;
    ELSE
      rx := rx || CASE WHEN ascii(c) < 128 AND c !~ '[A-Za-z0-9]' THEN '\' ELSE '' END || c;
    END IF;
    i := i + 1;
  END LOOP;
  RETURN rx || '$';
END $$;
CREATE FUNCTION pg_temp.jet_like(pattern text, value text, esc text DEFAULT '') RETURNS boolean
LANGUAGE sql IMMUTABLE PARALLEL SAFE
AS $$ SELECT pg_temp.jet_fold(value) COLLATE "C" ~ pg_temp.jet_regex(pattern, esc) $$;
CREATE FUNCTION pg_temp.jet_like(pattern text, value float8, esc text DEFAULT '') RETURNS boolean
LANGUAGE sql IMMUTABLE PARALLEL SAFE
AS $$ SELECT pg_temp.jet_like(pattern, value::text, esc) $$;
CREATE FUNCTION pg_temp.jet_like(pattern text, value timestamp, esc text DEFAULT '') RETURNS boolean
LANGUAGE sql IMMUTABLE PARALLEL SAFE
AS $$ SELECT pg_temp.jet_like(pattern, value::text, esc) $$;
CREATE FUNCTION pg_temp.jet_number(t text) RETURNS float8 LANGUAGE plpgsql IMMUTABLE STRICT AS $$
BEGIN
  RETURN replace(trim(t), ',', '.')::float8;
EXCEPTION WHEN invalid_text_representation THEN
  RAISE EXCEPTION 'No coinciden los tipos de datos en la expresión de criterios.' USING ERRCODE = '42804';
END $$;
CREATE FUNCTION pg_temp.jet_add(a float8, b float8) RETURNS float8 LANGUAGE sql IMMUTABLE
AS $$ SELECT a + b $$;
CREATE FUNCTION pg_temp.jet_add(a text, b text) RETURNS text LANGUAGE sql IMMUTABLE
AS $$ SELECT a || b $$;
CREATE FUNCTION pg_temp.jet_add(a float8, b text) RETURNS float8 LANGUAGE sql IMMUTABLE
AS $$ SELECT a + pg_temp.jet_number(b) $$;
CREATE FUNCTION pg_temp.jet_add(a text, b float8) RETURNS float8 LANGUAGE sql IMMUTABLE
AS $$ SELECT pg_temp.jet_number(a) + b $$;
CREATE FUNCTION pg_temp.jet_text(v text) RETURNS text LANGUAGE sql IMMUTABLE AS $$ SELECT v $$;
CREATE FUNCTION pg_temp.jet_text(v float8) RETURNS text LANGUAGE sql IMMUTABLE
AS $$ SELECT replace(v::text, '.', ',') $$;
CREATE FUNCTION pg_temp.jet_text(v timestamp) RETURNS text LANGUAGE sql IMMUTABLE
AS $$ SELECT CASE WHEN v = date_trunc('day', v) THEN to_char(v, 'DD/MM/YYYY')
              ELSE to_char(v, 'DD/MM/YYYY HH24:MI:SS') END $$;
CREATE FUNCTION pg_temp.jet_concat(VARIADIC parts text[]) RETURNS text LANGUAGE sql IMMUTABLE
AS $$ SELECT CASE WHEN num_nonnulls(VARIADIC parts) = 0 THEN NULL ELSE array_to_string(parts, '') END $$;
)SQL";

std::string ChrFunction() {
  std::string table;
  for (long code = 0; code <= 255; ++code) {
    std::string text = code == 0 ? "" : *jetsql::ChrText(code);  // text cannot hold NUL
    std::string quoted = "'";
    for (char c : text) quoted += c == '\'' ? std::string("''") : std::string(1, c);
    table += (code ? "," : "") + quoted + "'";
  }
  return "CREATE FUNCTION pg_temp.jet_chr(code float8) RETURNS text LANGUAGE plpgsql IMMUTABLE "
         "STRICT AS $$ DECLARE n float8 := round(code); BEGIN IF n < 0 OR n > 255 THEN RAISE "
         "EXCEPTION 'Llamada a procedimiento o argumento no válidos' USING ERRCODE = '22023'; "
         "END IF; RETURN (ARRAY[" + table + "]::text[])[n::int + 1]; END $$;"
         "CREATE FUNCTION pg_temp.jet_chr(code text) RETURNS text LANGUAGE sql IMMUTABLE "
         "AS $$ SELECT pg_temp.jet_chr(pg_temp.jet_number(code)) $$;";
}

}  // namespace

const std::string& JetFunctionsSql() {
  static const std::string sql = std::string(kFunctions) + ChrFunction();
  return sql;
}

}  // namespace cp::postgres
