// The grid's model and its data seen from below: what they ask of whoever puts the grid on a
// screen. The control implements it; tests play it.
//
// Calls marked EVENT run handlers of the application, which may do anything: write properties, fill
// the grid anew, close its table, its form and with it its window. Whoever calls into the model or
// the data keeps the control alive meanwhile (`Com<IUnknown> alive(&Outer())`), so that these
// objects outlast every handler; model and data ask again for all else behind an event.
//
// Texts are code page 932 unless they are wide.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/DbTypes.h"
#include "platform/WindowText.h"

namespace qrn {

// The properties by which a grid finds its data, taken as they are at one moment.
struct GridNames {
  std::string source;      // DbListSource
  std::string table;       // DbListTable
  std::string index;       // DbListIndex
  std::string fields;      // DbListFields
  std::string conditions;  // DbConditions
};

// Events without arguments that the data raises.
enum class GridEvent { AfterColUpdate, AfterUpdate, AfterDelete };

class GridHost {
 public:
  virtual ~GridHost() = default;

  // The control's window; null before it is made and when it has gone.
  virtual WindowHandle Window() const = 0;
  virtual bool IsInPlace() const = 0;  // the container has activated the control in place
  virtual bool IsRunTime() const = 0;  // ambient user mode
  virtual GridNames Names() = 0;

  // The table of these names on the control's form; null where they lead nowhere. Good until the
  // next EVENT.
  virtual DbTableInfo* FindTable(const GridNames& names) = 0;
  // EVENT. Opens a closed table as a bound control does. False after the message of a failure.
  virtual bool OpenTable(DbTableInfo& table, const GridNames& names) = 0;

  // `text` dressed by the container's format service after a column's `FormatString`; nothing where
  // the container has no such service or it fails: the text then stays as it is. Neither is empty.
  virtual std::optional<std::string> FormatCell(std::string_view text, std::string_view format) = 0;

  virtual std::string EditText() = 0;  // what the edit box holds
  // Pixels that a column of that name takes when `SetColWidth` fits it: the name in the grid's
  // font, and 3 more with `Appearance` 1, otherwise 1.
  virtual int32_t NameWidthPx(std::string_view name) = 0;

  virtual void RepaintCurrentCell() = 0;  // that cell alone, over what stands there
  virtual void Repaint() = 0;             // invalidates the control
  // A fill has ended: hides the edit box, lays the bars out, sets their ranges without resetting
  // their positions, invalidates.
  virtual void ShowFilled() = 0;

  // EVENT, all of these. A status and a text come back as handlers left them; the questions are
  // true when a handler cancelled.
  virtual void RaiseFormat(std::u16string& text) = 0;
  virtual Status RaiseBtrieveError(std::string_view tableName, Status status) = 0;
  virtual bool RaiseBeforeColUpdate(const std::string& text) = 0;
  virtual bool RaiseBeforeUpdate() = 0;
  virtual bool RaiseBeforeDelete() = 0;
  virtual void Raise(GridEvent event) = 0;
};

}  // namespace qrn
