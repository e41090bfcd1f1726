// The canvas of the window: shows a document, and hands pointer and keyboard to the tools.
//
// The document is drawn by the kit into tiles, which are shown as textures; a frame draws no longer than its budget and
// goes on in the next one, showing the tiles of the former zoom stretched meanwhile. The frame, the handles and the
// rubber band are drawn by the kit over the window's own drawing.
#pragma once

#include <gtkmm/adjustment.h>
#include <gtkmm/gesturedrag.h>
#include <gtkmm/widget.h>

#include <map>

#include "host/session/DocumentSession.h"
#include "host/view/GuideTool.h"
#include "host/view/HandleKeys.h"
#include "host/view/PointerTool.h"
#include "host/view/ShiftedSelection.h"
#include "host/view/TileCache.h"
#include "host/view/ViewTransform.h"
#include "host/window/canvas/CanvasMenu.h"
#include "host/window/canvas/GuideField.h"

namespace host {

class CanvasView : public Gtk::Widget, public SessionObserver {
 public:
  CanvasView();
  CanvasView(const CanvasView&) = delete;
  CanvasView& operator=(const CanvasView&) = delete;
  ~CanvasView() override;

  /// Null shows nothing. The session outlives the view or is replaced before.
  void SetSession(DocumentSession* session);

  const ViewTransform& View() const { return view_; }
  void ZoomTo(double zoom);    ///< about the middle
  void ZoomBy(double factor);  ///< about the pointer when it is over the canvas, else the middle
  void ZoomToFit();            ///< the page
  void ZoomToSelection();
  void ZoomToDrawing();  ///< all that is shown
  /// Takes the object below what is selected where a button was pressed last.
  void SelectBelow();
  /// The spacing of the grid that is shown, 0 for none.
  void SetGrid(double spacing);
  void SetSnap(const SnapRules& snap);
  /// Guides that are hidden or locked can't be moved.
  void SetGuides(bool shown, bool locked);
  // A guide comes out of the ruler above (axis 1) or on the left (axis 0); points are those of the canvas.
  void PressRuler(int axis);
  void DragRuler(const AGPoint& point, Gdk::ModifierType state);
  void ReleaseRuler();
  /// Makes a guide, of axis 0 one that stands, in the middle of what is selected, or of the view; it is chosen then.
  void AddGuide(int axis);
  /// Chooses the next guide, which the arrow keys move.
  void ChooseGuide(bool backwards);
  /// The class of what the next drag makes, or, with one that stays, each drag; none to select.
  void SetNewClass(std::optional<AKClassID> classID, bool stays);
  std::optional<AKClassID> NewClass() const { return tool_.NewClass(); }

  /// Scrolls to the object when it is not all in sight.
  void RevealObject(ObjectID object);
  /// What is in the middle of the view; map units.
  AGPoint MiddlePlace() const { return view_.ToMap(Middle()); }
  /// Where the pointer is, or was when a button was pressed last; map units.
  AGPoint PointerPlace() const { return pointerInside_ ? view_.ToMap(lastPointer_) : pressed_; }

  /// For scroll bars: the map's extent in pixels of the view.
  Glib::RefPtr<Gtk::Adjustment> Horizontal() const { return horizontal_; }
  Glib::RefPtr<Gtk::Adjustment> Vertical() const { return vertical_; }

  /// Zoom or position changed.
  sigc::signal<void()>& SignalViewChanged() { return viewChanged_; }
  /// Where the pointer is on the map.
  sigc::signal<void(AGPoint)>& SignalPointer() { return pointer_; }
  /// One line for the user about what could not be done.
  sigc::signal<void(Problem)>& SignalProblem() { return problem_; }
  /// The class to make was chosen or, after an object was made, given up.
  sigc::signal<void()>& SignalToolChanged() { return toolChanged_; }
  /// A key asks for the tool to make objects with, which stays or not.
  sigc::signal<void(bool)>& SignalToolAsked() { return toolAsked_; }

  // SessionObserver
  void OnAreaChanged(const AGRect& area) override;
  void OnPageChanged() override;
  void OnObjectChanged(ObjectID) override { DescribeSoon(); }
  void OnHistoryChanged() override { DescribeSoon(); }
  void OnAidsChanged() override;
  void OnSelectionChanged() override;
  void OnSelectionShifted() override;

 protected:
  void snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) override;
  void size_allocate_vfunc(int width, int height, int baseline) override;
  void measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural, int& minimumBaseline,
                     int& naturalBaseline) const override;
  Gtk::SizeRequestMode get_request_mode_vfunc() const override { return Gtk::SizeRequestMode::CONSTANT_SIZE; }

 private:
  struct Shown {
    std::uint64_t version = 0;
    Glib::RefPtr<Gdk::Texture> texture;
  };

  void AddPointer();
  void AddPanning();
  void AddScrolling();
  void AddKeys();
  bool OnKey(guint key, Gdk::ModifierType state);
  bool OnArrow(guint key, PointerModifiers modifiers);
  bool OnTab(guint key, PointerModifiers modifiers);
  bool OnToolKey(guint key, PointerModifiers modifiers);
  void OnEscape();
  void OnEnter();
  void Place();
  void TakeHandle(bool backwards);
  Handle TakenHandle() const;
  void Nudge(const AGPoint& by, bool stretches);
  /// What there is to be heard of the canvas.
  void DescribeSoon();
  std::string Description() const;
  void AddMenu();
  void SelectNext(bool backwards, bool adds);
  void ShowPointer(const AGPoint& point, PointerModifiers modifiers);
  void ZoomToObjects(const ObjectIDs& ids);
  void OpenMenuOfSelection();
  void ViewChanged();
  void UpdateAdjustments();
  void OnAdjusted();
  AGSize Size() const;
  AGPoint Middle() const;
  using Textures = std::map<std::pair<int, int>, Shown>;

  /// Draws tiles for about as long as the budget; true when all that is seen is up to date.
  bool DrawTiles(const std::vector<TileCache::Tile*>& seen, std::chrono::milliseconds budget);
  void DropShifted();
  void ForgetOldTextures();
  graphene_rect_t RectOfTile(const TileCache::Tile& tile, const ViewTransform& view, double scale) const;
  void AppendFormer(Gtk::Snapshot& snapshot);
  void AppendSeen(Gtk::Snapshot& snapshot, const std::vector<TileCache::Tile*>& seen);
  /// `scale` is pixels of the view a pixel of the tile.
  void AppendTile(Gtk::Snapshot& snapshot, const TileCache::Tile& tile, const ViewTransform& view, double scale,
                  Textures* textures);
  void AppendOverlay(Gtk::Snapshot& snapshot);
  void AppendDragText(Gtk::Snapshot& snapshot);
  void AppendHint(Gtk::Snapshot& snapshot);
  void AppendGuides(Gtk::Snapshot& snapshot);
  /// The guide that a press at a point would take.
  std::optional<Guide> GuideAt(const AGPoint& point, PointerModifiers modifiers) const;
  bool CanEditGuides() const { return session_ != nullptr && guidesShown_ && !guidesLocked_; }
  void GuideChosen();
  bool NudgeGuide(const AGPoint& by);
  void MoveGuide(double place);
  /// A field for the place of the chosen guide. False when none is chosen.
  bool OpenGuideField();
  void DragTo(const AGPoint& point, PointerModifiers modifiers);
  bool ScrollAtEdge();

  DocumentSession* session_ = nullptr;
  ViewTransform view_;
  TileCache tiles_{nullptr};
  PointerTool tool_{nullptr, &view_};
  GuideTool guides_{&view_};
  bool guidesShown_ = true;
  bool guidesLocked_ = false;
  double gridSpacing_ = 0;
  ShiftedSelection shifted_;
  Textures textures_;
  Textures formerTextures_;
  Textures beneathTextures_;
  Textures aboveTextures_;
  double texturesScale_ = 0;
  bool busy_ = false;  ///< the last frame left something to draw
  Glib::RefPtr<Gtk::Adjustment> horizontal_;
  Glib::RefPtr<Gtk::Adjustment> vertical_;
  bool adjusting_ = false;
  bool fitted_ = false;
  bool toolStays_ = false;
  bool spaceHeld_ = false;
  bool panning_ = false;  ///< the space bar was held when the button was pressed
  AGPoint lastPointer_;
  bool pointerInside_ = false;
  ObjectID hovered_ = kNoObjectID;  ///< what a click would take, as the pointer moved last
  AGPoint pressed_;                 ///< map units: where a button was pressed last
  CanvasMenu menu_{*this};
  GuideField guideField_{*this};
  HandleKeys handleKeys_;
  sigc::connection describing_;
  AGPoint panStart_;
  AGPoint dragPoint_;  ///< of the view: where the pointer is during a drag
  PointerModifiers dragModifiers_;
  sigc::connection edgeTimer_;
  sigc::signal<void()> viewChanged_;
  sigc::signal<void(AGPoint)> pointer_;
  sigc::signal<void(Problem)> problem_;
  sigc::signal<void()> toolChanged_;
  sigc::signal<void(bool)> toolAsked_;
};

}  // namespace host
