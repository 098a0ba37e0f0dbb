#include "btrieve/server/ServerRanges.h"

#include <utility>

#include "btrieve/server/ServerLayout.h"

namespace btrieve::server {
namespace {

// Ranges are reached by their key, as connections of the record manager are set to; those of others
// may write, too, at the speed that the planner makes of it.
constexpr char kRangesText[] = R"(
CREATE TABLE IF NOT EXISTS {schema}.btrieve_ranges(
  file bigint NOT NULL, key int NOT NULL, low bytea NOT NULL, n int NOT NULL,
  PRIMARY KEY (file, key, low)) WITH (fillfactor = 50);
CREATE TABLE IF NOT EXISTS {schema}.btrieve_pending(
  file bigint NOT NULL, key int NOT NULL, entry bytea NOT NULL, n int NOT NULL);
CREATE INDEX IF NOT EXISTS btrieve_pending_file ON {schema}.btrieve_pending(file);

CREATE OR REPLACE FUNCTION {schema}.btrieve_range_size() RETURNS int LANGUAGE sql IMMUTABLE
AS 'SELECT 1000';

CREATE OR REPLACE FUNCTION {schema}.btrieve_position(low bytea) RETURNS bigint
LANGUAGE sql IMMUTABLE AS $$ SELECT ('x' || encode(low, 'hex'))::bit(64)::bigint $$;

CREATE OR REPLACE FUNCTION {schema}.btrieve_cut(
  of_file bigint, of_table text, of_key int, first bytea, counted int) RETURNS void
LANGUAGE plpgsql AS $$
DECLARE
  size bigint;
  next bytea;
  entry text := CASE of_key WHEN 0 THEN 'pos' ELSE 'k' || of_key END;
  bound text := CASE of_key WHEN 0 THEN '{schema}.btrieve_position($%s)' ELSE '$%s' END;
BEGIN
  IF counted <= 0 THEN
    DELETE FROM {schema}.btrieve_ranges
      WHERE file = of_file AND key = of_key AND low = first AND low <> '' AND n = 0;
    RETURN;
  END IF;
  SELECT greatest({schema}.btrieve_range_size(), sqrt(records))::bigint INTO STRICT size
    FROM {schema}.btrieve_files WHERE id = of_file;
  IF counted <= 2 * size THEN RETURN; END IF;
  SELECT low INTO next FROM {schema}.btrieve_ranges
    WHERE file = of_file AND key = of_key AND low > first ORDER BY low LIMIT 1;
  size := ceil(counted / (counted / size)::numeric);
  EXECUTE format('
    INSERT INTO {schema}.btrieve_ranges AS r
    SELECT $1, $2, CASE place WHEN 0 THEN $3 ELSE %1$s END, least($4, $5 - place)
    FROM (SELECT %2$s, row_number() OVER (ORDER BY %2$s) - 1 AS place FROM %3$s
          WHERE %2$s >= %4$s AND %5$s) AS entries WHERE place %% $4 = 0
    ON CONFLICT (file, key, low) DO UPDATE SET n = EXCLUDED.n',
    CASE of_key WHEN 0 THEN 'int8send(pos)' ELSE entry END, entry, of_table, format(bound, 3),
    CASE WHEN next IS NULL THEN 'true' ELSE entry || ' < ' || format(bound, 6) END)
    USING of_file, of_key, first, size, counted, next;
END $$;

CREATE OR REPLACE FUNCTION {schema}.btrieve_fold(of_file bigint, of_table text) RETURNS void
LANGUAGE plpgsql AS $$
DECLARE grown record;
BEGIN
  FOR grown IN
    WITH gone AS (DELETE FROM {schema}.btrieve_pending WHERE file = of_file RETURNING *),
    changes AS (SELECT key, entry, sum(n) AS n FROM gone GROUP BY 1, 2 HAVING sum(n) <> 0)
    {few}{counting}
  LOOP
    PERFORM {schema}.btrieve_cut(of_file, of_table, grown.key, grown.low, grown.n);
  END LOOP;
END $$;
)";

constexpr char kDropSchemaText[] = R"(
DROP TABLE IF EXISTS {schema}.btrieve_ranges, {schema}.btrieve_pending;
DROP FUNCTION IF EXISTS {schema}.btrieve_range_size(), {schema}.btrieve_position(bytea),
  {schema}.btrieve_cut(bigint, text, int, bytea, int), {schema}.btrieve_fold(bigint, text);
)";

// Behind a WITH of changes(key, entry, n), where in btrieve_ranges each stands, by its place.
constexpr char kFewPlaces[] = R"(,
    places AS (
      SELECT (SELECT b.ctid FROM {schema}.btrieve_ranges AS b WHERE b.file = {file} AND
              b.key = c.key AND b.low <= c.entry ORDER BY b.low DESC LIMIT 1) AS place, c.n
      FROM changes AS c))";

// The same for many new rows: each order of theirs among all its ranges, which are read once.
constexpr char kManyPlaces[] = R"(WITH
    orders AS MATERIALIZED (
      SELECT key, array_agg(low ORDER BY low) AS lows, array_agg(ctid ORDER BY low) AS places
      FROM {schema}.btrieve_ranges WHERE file = {file} GROUP BY key),
    places AS ({orders}))";
constexpr char kPlacesOfOrder[] =
    "SELECT o.places[r.at] AS place, r.n FROM orders AS o CROSS JOIN (SELECT width_bucket({entry}, "
    "(SELECT lows FROM orders WHERE key = {key})) AS at, count(*) AS n FROM rows_here WHERE "
    "{column} "
    "IS NOT NULL GROUP BY 1) AS r WHERE o.key = {key}";

// Behind one of these: adds them to the ranges; its rows are the ranges to be looked at.
constexpr char kCounting[] = R"(,
    sums AS (SELECT place, sum(n)::int AS n FROM places GROUP BY 1 HAVING sum(n) <> 0),
    counted AS (UPDATE {schema}.btrieve_ranges AS r SET n = r.n + s.n FROM sums AS s
                WHERE r.ctid = s.place RETURNING r.key, r.low, r.n)
    SELECT key, low, n FROM counted WHERE n <= 0 OR n > 2 * {schema}.btrieve_range_size())";

constexpr char kFollowText[] = R"(
CREATE FUNCTION {schema}.btrieve_follow_{file}() RETURNS trigger
LANGUAGE plpgsql AS $$
DECLARE grown record;
BEGIN
  IF current_setting('btrieve.later', true) = 'on' THEN
    IF TG_OP = 'INSERT' THEN
      INSERT INTO {schema}.btrieve_pending SELECT {file}, * FROM ({come}) AS c;
    ELSIF TG_OP = 'DELETE' THEN
      INSERT INTO {schema}.btrieve_pending SELECT {file}, * FROM ({go}) AS c;
    ELSE
      INSERT INTO {schema}.btrieve_pending SELECT {file}, * FROM ({move}) AS c;
    END IF;
  ELSIF TG_OP = 'INSERT' THEN
    IF (SELECT count(*) FROM rows_here) > 50 THEN
      {count many}
    ELSE
      {count come}
    END IF;
  ELSIF TG_OP = 'DELETE' THEN
    {count go}
  ELSE
    {count move}
  END IF;
  RETURN NULL;
END $$;
CREATE TRIGGER btrieve_come AFTER INSERT ON {table} REFERENCING NEW TABLE AS rows_here
  FOR EACH STATEMENT EXECUTE FUNCTION {schema}.btrieve_follow_{file}();
CREATE TRIGGER btrieve_go AFTER DELETE ON {table} REFERENCING OLD TABLE AS rows_here
  FOR EACH STATEMENT EXECUTE FUNCTION {schema}.btrieve_follow_{file}();
CREATE TRIGGER btrieve_move AFTER UPDATE ON {table}
  FOR EACH ROW WHEN ({moves}) EXECUTE FUNCTION {schema}.btrieve_follow_{file}();
)";

// {places}: of what has come or gone.
constexpr char kLoopText[] = R"(FOR grown IN {places}{counting} LOOP
      PERFORM {schema}.btrieve_cut({file}, '{table}', grown.key, grown.low, grown.n);
    END LOOP;)";

constexpr char kRowsText[] =
    "SELECT e.key, e.entry, {n} AS n FROM rows_here CROSS JOIN LATERAL (VALUES {entries}) AS "
    "e(key, entry) WHERE e.entry IS NOT NULL";
constexpr char kMoveText[] =
    "SELECT e.key, v.entry, v.n FROM (VALUES {entries}) AS e(key, old, new) CROSS JOIN LATERAL "
    "(VALUES (e.old, -1), (e.new, 1)) AS v(entry, n) WHERE e.old IS DISTINCT FROM e.new AND "
    "v.entry IS NOT NULL";

constexpr char kDropText[] =
    "DELETE FROM {schema}.btrieve_ranges WHERE file = {file} AND key = {key};"
    "DELETE FROM {schema}.btrieve_pending WHERE file = {file} AND key = {key};";
constexpr char kCountText[] =
    "INSERT INTO {schema}.btrieve_ranges VALUES({file}, {key}, '', 0);"
    "UPDATE {schema}.btrieve_ranges SET n = (SELECT count({column}) FROM {table})"
    "  WHERE file = {file} AND key = {key};"
    "SELECT {schema}.btrieve_cut(file, '{table}', key, low, n) FROM {schema}.btrieve_ranges"
    "  WHERE file = {file} AND key = {key}";

constexpr char kTotalText[] =
    "SELECT sum(n) FROM {schema}.btrieve_ranges WHERE file = {file} AND key = {key}";
constexpr char kRankText[] =
    "WITH r AS MATERIALIZED (SELECT low FROM {schema}.btrieve_ranges WHERE file = {file} AND key = "
    "{key} AND low <= {entry} ORDER BY low DESC LIMIT 1) SELECT coalesce((SELECT sum(n) FROM "
    "{schema}.btrieve_ranges WHERE file = {file} AND key = {key} AND low < (SELECT low FROM r)), 0)"
    " + (SELECT count(*) FROM {table} WHERE {column} >= {low} AND {column} < {bound}) FROM r";
constexpr char kEntryText[] =
    "WITH r AS MATERIALIZED (SELECT low, upto - n AS below FROM (SELECT low, n, sum(n) OVER (ORDER "
    "BY low ROWS UNBOUNDED PRECEDING) AS upto FROM {schema}.btrieve_ranges WHERE file = {file} AND "
    "key = {key}) AS s WHERE upto > $1::bigint ORDER BY low LIMIT 1) SELECT {column} FROM {table} "
    "WHERE {column} >= {low} ORDER BY {column} OFFSET $1::bigint - (SELECT below FROM r) LIMIT 1";

// A range whose number is not that of its entries; an order without its lowest one.
constexpr char kWrongText[] =
    "SELECT (SELECT count(*) FROM (SELECT low, n, lead(low) OVER (ORDER BY low) AS next FROM "
    "{schema}.btrieve_ranges WHERE file = {file} AND key = {key}) AS r WHERE n <> (SELECT count(*) "
    "FROM {table} WHERE {column} >= {from} AND {column} < {to})) + (SELECT count(*) FROM (SELECT "
    "min(length(low)) AS least FROM {schema}.btrieve_ranges WHERE file = {file} AND key = {key}) "
    "AS l WHERE least IS DISTINCT FROM 0) + (SELECT count(*) FROM {schema}.btrieve_pending WHERE "
    "file = {file} AND key = {key})";

using Words = std::vector<std::pair<const char*, std::string>>;

// What the words stand for may hold words again, of those behind.
std::string Filled(std::string text, const Words& words) {
  for (const auto& [word, meaning] : words) {
    const std::string mark = std::string("{") + word + "}";
    for (size_t at = text.find(mark); at != text.npos; at = text.find(mark, at + meaning.size())) {
      text.replace(at, mark.size(), meaning);
    }
  }
  return text;
}

std::string ColumnOf(uint16_t key) { return key == kPositionsKey ? "pos" : KeyColumn(key); }

// As ranges have it; `row` with its dot.
std::string EntryOf(uint16_t key, const std::string& row) {
  const std::string column = row + ColumnOf(key);
  return key == kPositionsKey ? "int8send(" + column + ")" : column;
}

// Of a file, then of one order of it.
Words FileWords(const RangedFile& file) {
  return {{"table", TableName(file.schema, file.table)},
          {"schema", Quoted(file.schema)},
          {"file", std::to_string(file.id)}};
}

std::string OrderText(const char* text, const RangedFile& file, uint16_t key) {
  const bool isKey = key != kPositionsKey;
  const std::string position = Quoted(file.schema) + ".btrieve_position";
  const std::string behind = "decode(repeat('ff', 300), 'hex')";  // longer than any entry
  Words words = {
      {"bound", isKey ? "$1" : "$1::bigint"},
      {"entry", isKey ? "$1" : "int8send($1::bigint)"},
      {"low", isKey ? "(SELECT low FROM r)" : "(SELECT " + position + "(low) FROM r)"},
      {"from", isKey ? "low" : position + "(low)"},
      {"to", isKey ? "coalesce(next, " + behind + ")"
                   : "coalesce(" + position + "(next), " + std::to_string(INT64_MAX) + ")"},
      {"column", ColumnOf(key)},
      {"key", std::to_string(key)},
  };
  const Words of = FileWords(file);
  words.insert(words.end(), of.begin(), of.end());
  return Filled(text, words);
}

// "each, each" of all orders.
template <class Each>
std::string Listed(const std::vector<uint16_t>& keyIds, const char* between, Each each) {
  std::string list = each(kPositionsKey);
  for (const uint16_t key : keyIds) list += between + each(key);
  return list;
}

std::string RowsText(const std::vector<uint16_t>& keyIds, const char* n) {
  const auto entry = [](uint16_t key) {
    return "(" + std::to_string(key) + ", " + EntryOf(key, "rows_here.") + ")";
  };
  return Filled(kRowsText, {{"n", n}, {"entries", Listed(keyIds, ", ", entry)}});
}

std::string ManyText(const std::vector<uint16_t>& keyIds) {
  const auto places = [](uint16_t key) {
    return Filled(kPlacesOfOrder, {{"entry", EntryOf(key, "rows_here.")},
                                   {"column", ColumnOf(key)},
                                   {"key", std::to_string(key)}});
  };
  return Filled(kManyPlaces, {{"orders", Listed(keyIds, " UNION ALL ", places)}});
}

std::string MoveText(const std::vector<uint16_t>& keyIds) {
  const auto entry = [](uint16_t key) {
    return "(" + std::to_string(key) + ", " + EntryOf(key, "OLD.") + ", " + EntryOf(key, "NEW.") +
           ")";
  };
  return Filled(kMoveText, {{"entries", Listed(keyIds, ", ", entry)}});
}

std::string MovesText(const std::vector<uint16_t>& keyIds) {
  return Listed(keyIds, " OR ", [](uint16_t key) {
    return "OLD." + ColumnOf(key) + " IS DISTINCT FROM NEW." + ColumnOf(key);
  });
}

}  // namespace

std::string RangesSchemaText(const std::string& schema) {
  return Filled(kRangesText, {{"few", kFewPlaces},
                              {"counting", kCounting},
                              {"file", "of_file"},
                              {"schema", Quoted(schema)}});
}

std::string DropRangesText(const std::string& schema) {
  return Filled(kDropSchemaText, {{"schema", Quoted(schema)}});
}

void FollowWrites(ServerLink& link, const RangedFile& file, const std::vector<uint16_t>& keyIds) {
  const auto loop = [](const std::string& places) {
    return Filled(kLoopText, {{"places", places}, {"counting", kCounting}});
  };
  const auto few = [&](const char* changes) {
    return loop(std::string("WITH changes AS ({") + changes + "})" + kFewPlaces);
  };
  Words words = {{"count many", loop(ManyText(keyIds))},
                 {"count come", few("come")},
                 {"count go", few("go")},
                 {"count move", few("move")},
                 {"come", RowsText(keyIds, "1")},
                 {"go", RowsText(keyIds, "-1")},
                 {"move", MoveText(keyIds)},
                 {"moves", MovesText(keyIds)}};
  const Words of = FileWords(file);
  words.insert(words.end(), of.begin(), of.end());
  link.Run(Filled(kFollowText, words));
}

void IgnoreWrites(ServerLink& link, const RangedFile& file) {
  link.Run(Filled("DROP FUNCTION {schema}.btrieve_follow_{file}() CASCADE", FileWords(file)));
}

void CountRanges(ServerLink& link, const RangedFile& file, uint16_t key) {
  link.Run(OrderText(kDropText, file, key) + OrderText(kCountText, file, key));
}

void CountRanges(ServerLink& link, const RangedFile& file, const std::vector<uint16_t>& keyIds) {
  link.Run(Listed(keyIds, ";", [&](uint16_t key) {
    return OrderText(kDropText, file, key) + OrderText(kCountText, file, key);
  }));
}

void DropRanges(ServerLink& link, const RangedFile& file, uint16_t key) {
  link.Run(OrderText(kDropText, file, key));
}

void DropAllRanges(ServerLink& link, const std::string& schema, int64_t id) {
  link.Run(
      Filled("DROP FUNCTION IF EXISTS {schema}.btrieve_follow_{file}() CASCADE;"
             "DELETE FROM {schema}.btrieve_ranges WHERE file = {file};"
             "DELETE FROM {schema}.btrieve_pending WHERE file = {file}",
             FileWords({schema, "", id})));
}

Question LaterQuestion() { return {"SELECT set_config('btrieve.later', 'on', true)", {}}; }

Question FoldQuestion(const RangedFile& file) {
  return {Filled("SELECT {schema}.btrieve_fold({file}, '{table}')", FileWords(file)), {}};
}

std::string TotalText(const RangedFile& file, uint16_t key) {
  return OrderText(kTotalText, file, key);
}

std::string RankText(const RangedFile& file, uint16_t key) {
  return OrderText(kRankText, file, key);
}

std::string EntryText(const RangedFile& file, uint16_t key) {
  return OrderText(kEntryText, file, key);
}

uint64_t CountWrongRanges(ServerLink& link, const RangedFile& file,
                          const std::vector<uint16_t>& keyIds) {
  int64_t wrong = 0;
  const auto add = [&](uint16_t key) {
    wrong += link.Ask(OrderText(kWrongText, file, key)).Number(0, 0);
  };
  add(kPositionsKey);
  for (const uint16_t key : keyIds) add(key);
  return static_cast<uint64_t>(wrong);
}

}  // namespace btrieve::server
