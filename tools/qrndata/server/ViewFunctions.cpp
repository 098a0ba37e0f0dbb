#include "tools/qrndata/server/ViewFunctions.h"

#include <string_view>

#include "btrieve/server/ServerLayout.h"

namespace qrndata {

namespace {

// $ stands for the schema. `d` is a record, `place` where the value begins (from 0), `width` its
// bytes. What is no value of the type is null, and so is what lies behind the record's end; no
// function refuses any bytes.
constexpr char kFunctions[] = R"sql(
CREATE TABLE IF NOT EXISTS $.btrieve_characters(code bytea PRIMARY KEY, character text NOT NULL);

-- Little-endian; eight bytes are signed in any case.
CREATE OR REPLACE FUNCTION $.btrieve_whole(d bytea, place integer, width integer, signed boolean)
RETURNS bigint LANGUAGE plpgsql IMMUTABLE STRICT AS $f$
DECLARE n bigint := 0;
BEGIN
  IF length(d) < place + width THEN RETURN NULL; END IF;
  FOR i IN REVERSE width - 1 .. 0 LOOP n := (n << 8) | get_byte(d, place + i); END LOOP;
  IF signed AND width < 8 AND n >= 1::bigint << (8 * width - 1) THEN
    n := n - (1::bigint << (8 * width));
  END IF;
  RETURN n;
END $f$;

-- A sign bit, an exponent, a mantissa of `width` bits, as a number of the system's would have them.
CREATE OR REPLACE FUNCTION $.btrieve_binary(sign bigint, exponent bigint, mantissa bigint,
                                            width integer)
RETURNS double precision LANGUAGE plpgsql IMMUTABLE STRICT AS $f$
DECLARE
  highest integer := CASE WHEN width = 23 THEN 255 ELSE 2047 END;
  power integer := greatest(exponent, 1) - (highest >> 1) - width;
  number double precision := mantissa;
BEGIN
  IF exponent = highest THEN
    RETURN CASE WHEN mantissa <> 0 THEN 'NaN' WHEN sign = 1 THEN '-Infinity' ELSE 'Infinity' END;
  END IF;
  IF exponent <> 0 THEN number := number + (1::bigint << width); END IF;
  IF sign = 1 THEN number := -number; END IF;
  -- In two steps: one of them alone may lie beyond what a number holds.
  RETURN number * 2::double precision ^ (power / 2) * 2::double precision ^ (power - power / 2);
END $f$;

CREATE OR REPLACE FUNCTION $.btrieve_float(d bytea, place integer, width integer)
RETURNS double precision LANGUAGE plpgsql IMMUTABLE STRICT AS $f$
DECLARE n bigint := $.btrieve_whole(d, place, width, false);
BEGIN
  IF width = 4 THEN
    RETURN $.btrieve_binary(n >> 31, (n >> 23) & 255, n & 8388607, 23);
  END IF;
  RETURN $.btrieve_binary((n >> 63) & 1, (n >> 52) & 2047, n & 4503599627370495, 52);
END $f$;

-- The older binary form: the exponent stands in the last byte, the sign above the mantissa.
CREATE OR REPLACE FUNCTION $.btrieve_bfloat(d bytea, place integer, width integer)
RETURNS double precision LANGUAGE plpgsql IMMUTABLE STRICT AS $f$
DECLARE n bigint := $.btrieve_whole(d, place, width, false);
BEGIN
  IF n = 0 THEN RETURN 0; END IF;
  IF width = 4 THEN
    RETURN $.btrieve_binary((n >> 23) & 1, ((n >> 24) - 2) & 255, n & 8388607, 23);
  END IF;
  RETURN $.btrieve_binary((n >> 55) & 1, ((n >> 56) & 255) + 894,
                          (n & 36028797018963967) >> 3, 52);
END $f$;

CREATE OR REPLACE FUNCTION $.btrieve_date(d bytea, place integer)
RETURNS date LANGUAGE plpgsql IMMUTABLE STRICT AS $f$
DECLARE
  day integer;
  month integer;
  year integer;
BEGIN
  IF length(d) < place + 4 THEN RETURN NULL; END IF;
  day := get_byte(d, place);
  month := get_byte(d, place + 1);
  year := get_byte(d, place + 2) + 256 * get_byte(d, place + 3);
  IF year < 1 OR month NOT BETWEEN 1 AND 12 OR day < 1 OR
     day > extract(day FROM make_date(year, month, 1) + interval '1 month' - interval '1 day') THEN
    RETURN NULL;
  END IF;
  RETURN make_date(year, month, day);
END $f$;

-- Four bytes of zero are no time.
CREATE OR REPLACE FUNCTION $.btrieve_time(d bytea, place integer)
RETURNS time LANGUAGE plpgsql IMMUTABLE STRICT AS $f$
DECLARE n bigint := $.btrieve_whole(d, place, 4, false);
BEGIN
  IF n = 0 OR n >> 24 > 23 OR (n >> 16) & 255 > 59 OR (n >> 8) & 255 > 59 OR n & 255 > 99 THEN
    RETURN NULL;
  END IF;
  RETURN make_time((n >> 24)::integer, ((n >> 16) & 255)::integer,
                   ((n >> 8) & 255) + (n & 255) / 100::double precision);
END $f$;

CREATE OR REPLACE FUNCTION $.btrieve_scaled(digits text, negative boolean, decimals integer)
RETURNS numeric LANGUAGE sql IMMUTABLE STRICT AS $f$
  SELECT CASE WHEN digits ~ '^[0-9]+$' THEN
    round((CASE WHEN negative THEN -digits::numeric ELSE digits::numeric END) *
          10::numeric ^ -decimals, decimals)
  END
$f$;

CREATE OR REPLACE FUNCTION $.btrieve_packed(d bytea, place integer, width integer,
                                            decimals integer)
RETURNS numeric LANGUAGE plpgsql IMMUTABLE STRICT AS $f$
DECLARE digits text;
BEGIN
  IF length(d) < place + width THEN RETURN NULL; END IF;
  digits := encode(substring(d FROM place + 1 FOR width), 'hex');
  RETURN $.btrieve_scaled(left(digits, -1), right(digits, 1) = 'd', decimals);
END $f$;

-- The last character as the sign and, in two of the forms, a digit: for each form the characters of
-- the digits 0 to 9, then those of the negative ones.
CREATE OR REPLACE FUNCTION $.btrieve_display(d bytea, place integer, width integer,
                                             decimals integer, form text)
RETURNS numeric LANGUAGE plpgsql IMMUTABLE STRICT AS $f$
DECLARE
  digits text := '';
  last text;
  at integer;
BEGIN
  IF length(d) < place + width THEN RETURN NULL; END IF;
  IF get_byte(d, place) = 0 THEN RETURN 0; END IF;
  FOR i IN 0 .. width - 1 LOOP
    IF get_byte(d, place + i) NOT BETWEEN 32 AND 126 THEN RETURN NULL; END IF;
    digits := digits || chr(get_byte(d, place + i));
  END LOOP;
  last := right(digits, 1);
  digits := left(digits, -1);
  IF form = 'trailing' THEN RETURN $.btrieve_scaled(digits, last = '-', decimals); END IF;
  IF last BETWEEN '0' AND '9' THEN
    RETURN $.btrieve_scaled(digits || last, false, decimals);
  END IF;
  at := position(last IN CASE WHEN form = 'over' THEN '{ABCDEFGHI}JKLMNOPQR'
                              ELSE '..........pqrstuvwxy' END) - 1;
  IF at < 0 OR last = '.' THEN RETURN NULL; END IF;
  RETURN $.btrieve_scaled(digits || (at % 10)::text, at >= 10, decimals);
END $f$;

CREATE OR REPLACE FUNCTION $.btrieve_money(d bytea, place integer, decimals integer)
RETURNS numeric LANGUAGE sql IMMUTABLE STRICT AS $f$
  SELECT round($.btrieve_whole(d, place, 8, true)::numeric * 10::numeric ^ -decimals, decimals)
$f$;

CREATE OR REPLACE FUNCTION $.btrieve_truth(d bytea, place integer)
RETURNS boolean LANGUAGE sql IMMUTABLE STRICT AS $f$
  SELECT CASE $.btrieve_whole(d, place, 1, false) WHEN 0 THEN false WHEN 1 THEN true END
$f$;

CREATE OR REPLACE FUNCTION $.btrieve_up_to_nul(bytes bytea)
RETURNS bytea LANGUAGE sql IMMUTABLE STRICT AS $f$
  SELECT CASE position('\x00'::bytea IN bytes) WHEN 0 THEN bytes
         ELSE substring(bytes FROM 1 FOR position('\x00'::bytea IN bytes) - 1) END
$f$;

-- Each character by the table; what is none is U+FFFD, and takes no ASCII character along.
CREATE OR REPLACE FUNCTION $.btrieve_characters_of(bytes bytea)
RETURNS text LANGUAGE plpgsql STABLE STRICT AS $f$
DECLARE
  at integer := 1;
  one text;
  result text := '';
BEGIN
  WHILE at <= length(bytes) LOOP
    one := (SELECT character FROM $.btrieve_characters
            WHERE code IN (substring(bytes FROM at FOR 1), substring(bytes FROM at FOR 2))
            ORDER BY length(code) DESC LIMIT 1);
    IF one IS NULL THEN
      result := result || chr(65533);
      at := at + $.btrieve_broken_length(substring(bytes FROM at FOR 2));
    ELSE
      result := result || one;
      at := at + CASE WHEN EXISTS (SELECT FROM $.btrieve_characters
                                   WHERE code = substring(bytes FROM at FOR 1)) THEN 1 ELSE 2 END;
    END IF;
  END LOOP;
  RETURN result;
END $f$;

CREATE OR REPLACE FUNCTION $.btrieve_broken_length(bytes bytea)
RETURNS integer LANGUAGE sql IMMUTABLE STRICT AS $f$
  SELECT CASE WHEN length(bytes) = 2 AND
                   (get_byte(bytes, 0) BETWEEN 129 AND 159 OR
                    get_byte(bytes, 0) BETWEEN 224 AND 252) AND
                   get_byte(bytes, 1) BETWEEN 128 AND 252 THEN 2 ELSE 1 END
$f$;

-- Code page 932 up to the first NUL. The server knows nearly all of it.
CREATE OR REPLACE FUNCTION $.btrieve_text(bytes bytea)
RETURNS text LANGUAGE plpgsql STABLE STRICT AS $f$
DECLARE text_bytes bytea := $.btrieve_up_to_nul(bytes);
BEGIN
  RETURN convert_from(text_bytes, 'SJIS');
EXCEPTION WHEN character_not_in_repertoire OR untranslatable_character THEN
  RETURN $.btrieve_characters_of(text_bytes);
END $f$;

-- A value that fills its field loses the blanks behind it.
CREATE OR REPLACE FUNCTION $.btrieve_string(d bytea, place integer, width integer)
RETURNS text LANGUAGE plpgsql STABLE STRICT AS $f$
DECLARE bytes bytea := substring(d FROM place + 1 FOR width);
BEGIN
  IF length(d) < place + width THEN RETURN NULL; END IF;
  IF position('\x00'::bytea IN bytes) = 0 THEN bytes := rtrim(bytes, ' '::bytea); END IF;
  RETURN $.btrieve_text(bytes);
END $f$;

-- A count, then so many bytes.
CREATE OR REPLACE FUNCTION $.btrieve_counted(d bytea, place integer, width integer)
RETURNS text LANGUAGE plpgsql STABLE STRICT AS $f$
BEGIN
  IF length(d) < place + width THEN RETURN NULL; END IF;
  RETURN $.btrieve_text(substring(d FROM place + 2 FOR least(get_byte(d, place), width - 1)));
END $f$;

-- Up to a NUL, at most `highest` bytes; `lowest` bytes must be there.
CREATE OR REPLACE FUNCTION $.btrieve_ended(d bytea, place integer, lowest integer,
                                           highest integer)
RETURNS text LANGUAGE plpgsql STABLE STRICT AS $f$
BEGIN
  IF length(d) < place + lowest THEN RETURN NULL; END IF;
  RETURN $.btrieve_text(substring(d FROM place + 1 FOR highest));
END $f$;

-- A length and a place in the record.
CREATE OR REPLACE FUNCTION $.btrieve_blob(d bytea, place integer)
RETURNS bytea LANGUAGE plpgsql IMMUTABLE STRICT AS $f$
DECLARE
  width bigint := $.btrieve_whole(d, place, 4, false);
  start bigint := $.btrieve_whole(d, place + 4, 4, false);
BEGIN
  IF width IS NULL OR start IS NULL OR start + width > length(d) THEN RETURN NULL; END IF;
  RETURN substring(d FROM start::integer + 1 FOR width::integer);
END $f$;

CREATE OR REPLACE FUNCTION $.btrieve_bytes(d bytea, place integer, width integer)
RETURNS bytea LANGUAGE sql IMMUTABLE STRICT AS $f$
  SELECT CASE WHEN length(d) >= place + width THEN substring(d FROM place + 1 FOR width) END
$f$;
)sql";

std::string In(const std::string& schema, std::string text) {
  const std::string name = btrieve::server::Quoted(schema) + ".";
  for (size_t at = text.find("$."); at != text.npos; at = text.find("$.", at + name.size())) {
    text.replace(at, 2, name);
  }
  return text;
}

}  // namespace

std::string ViewFunctions(const std::string& schema) { return In(schema, kFunctions); }

std::string DropViewFunctions(const std::string& schema) {
  constexpr std::string_view kMakes = "CREATE OR REPLACE FUNCTION ";
  const std::string_view all = kFunctions;
  std::string text = "DROP TABLE $.btrieve_characters";
  for (size_t at = all.find(kMakes); at != all.npos; at = all.find(kMakes, at)) {
    at += kMakes.size();
    text += "; DROP FUNCTION IF EXISTS ";
    text += all.substr(at, all.find(')', at) + 1 - at);
  }
  return In(schema, text);
}

}  // namespace qrndata
