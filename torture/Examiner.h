// The class whose methods examine the host: each asks, the first times that it is called, everything that can be asked
// of a host there, and then does what its name says.
#pragma once

#include "graphics/context/AKDrawEvent.h"
#include "kit/AKClassBasicTypes.h"

class AKArgs;
class AKDictionary;
class AKFile;

namespace torture {

class Examiner final : public AKObjectClass<Examiner, AKObjectSymbolVect> {
 public:
  static constexpr char kClassID[] = "akExam";
  static constexpr char kLocaleDomain[] = "HostTorture";

  /// The controls of its panel.
  enum Control : unsigned int { kNone = 0, kValue = 1, kEdit = 2, kDialogs = 3, kMemory = 4, kDeleteMe = 5 };

  static const char* DisplayName();
  static AKGUIDesc* BuildInspectorGUIDesc();

  Examiner();
  ~Examiner() override;

  int akmInitWithArgs(const AKArgs& args);
  int akmInitFromFile(const AKFile& file, unsigned int version);
  int akmWriteToFile(AKFile& file) const;
  int akmDelete();
  /// "Value", from 0 to 1.
  int akmSetObjectProperties(const AKDictionary& properties);
  /// The value, and what is known of the host: "Calls", "Findings", "NotReached".
  int akmGetObjectProperties(AKDictionary* properties) const;
  /// A box, red when something was found; its width tells the value.
  int akmDraw(const AGContext& context, const AKDrawEvent& event) const;
  AGRect akmGetNaturalBounds() const;
  int akmInspector(AKGUIDesc& panel, AKGUIEvent& event);
  /// Takes the events of its dialogs, and closes them with 17: as soon as they are filled, or when their button is
  /// pressed.
  int CloseAtOnce(AKGUIDesc& panel, AKGUIEvent& event);
  int CloseByButton(AKGUIDesc& panel, AKGUIEvent& event);

 private:
  void Close(AKGUIDesc& panel);
  void Change(AKGUIDesc& panel, AKGUIEvent& event);

  double value_ = 0.5;
};

}  // namespace torture
