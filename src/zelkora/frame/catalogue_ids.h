/// The catalogue ids that the library's code asks for by name, each named
/// once. (The message compositions keep theirs in their tables,
/// checking/message_table*.cpp, and the shape codes are the ids of the shape
/// names, frame/shared_types.h.) @file
#pragma once

#include <cstdint>

namespace zelkora::text_id {

// ---- User settings -----------------------------------------------------------
inline constexpr int32_t kApplication = 100;      ///< "Zelkora 结构快速设计"
inline constexpr int32_t kOptionsSection = 101;   ///< "Options"
inline constexpr int32_t kComboKeySuffix = 102;   ///< "cboOpt"
inline constexpr int32_t kCheckKeySuffix = 103;   ///< "chkOpt"
inline constexpr int32_t kSettingsSection = 104;  ///< "Settings"
inline constexpr int32_t kRevisionKey = 202;      ///< "Revision"

// ---- Words of the forms --------------------------------------------------------
inline constexpr int32_t kAutomatic = 500;              ///< "自动"
inline constexpr int32_t kConcreteGradeCaption = 1010;  ///< "混凝土的强度等级"
inline constexpr int32_t kOthersSection = 20012;        ///< "Others", of the program menu
inline constexpr int32_t kSecondGradeMark = 30049;      ///< "（Ⅱ）"
inline constexpr int32_t kHideProvided = 30050;         ///< "不显示实配钢筋"
inline constexpr int32_t kYes = 30500;                  ///< "是"
inline constexpr int32_t kMinorMember = 30505;          ///< "次要构件"
inline constexpr int32_t kListSeparator = 32196;        ///< "|"
inline constexpr int32_t kBarDash = 32205;              ///< "-"
inline constexpr int32_t kDefaultRowHeight = 36111;     ///< the grid's row height
inline constexpr int32_t kConcreteGrades = 45298;       ///< "7.5|10|...|60"
inline constexpr int32_t kColumnNumber = 50186;         ///< "柱号"
inline constexpr int32_t kControl = 50474;              ///< "控制"
inline constexpr int32_t kSeismic = 50476;              ///< "地震"
inline constexpr int32_t kEquals = 60033;               ///< " ＝ "

// ---- The calculation header ----------------------------------------------------
inline constexpr int32_t kProjectNameLine = 60030;  ///< "工程名称：|"
inline constexpr int32_t kStandardsWord = 60040;    ///< "设计依据："
inline constexpr int32_t kDateWord = 60041;         ///< "计算日期："

// ---- Questions -----------------------------------------------------------------
inline constexpr int32_t kLoadDefaultsQuestion = 32032;  ///< whether to load the default values
inline constexpr int32_t kLoadDefaultsTitle = 32033;     ///< the title of that question

// ---- Data files ----------------------------------------------------------------
inline constexpr int32_t kEof = 32031;               ///< "EOF", the member of the last record
inline constexpr int32_t kOutput = 35150;            ///< "OutPut"
inline constexpr int32_t kSave = 35151;              ///< "Save"
inline constexpr int32_t kInput = 35152;             ///< "InPut"
inline constexpr int32_t kLoad = 35153;              ///< "Load"
inline constexpr int32_t kDefault = 35154;           ///< "Default"
inline constexpr int32_t kSaveAsNewVersion = 35155;  ///< "SaveAsNewVersion"
inline constexpr int32_t kExtensionZks = 35168;      ///< "zks"
inline constexpr int32_t kExtensionZel = 35169;      ///< "zel"
inline constexpr int32_t kBackupExtension = 35170;   ///< "zk$"
inline constexpr int32_t kDisplayTuLiName = 37000;   ///< "bfDisplayTuLi"
inline constexpr int32_t kAddDataName = 37006;       ///< "tAddData"
inline constexpr int32_t kCellTextName = 37007;      ///< "tCellText"
inline constexpr int32_t kCellPlace = 52724;  ///< "第 %%1% 行第 %%2% 列", a cell of a table

// ---- Value lists and layouts ---------------------------------------------------
inline constexpr int32_t kListBase = 40000;  ///< value list L is text 40000 + L
/// The names of the suite's layouts.
inline constexpr int32_t kFirstLayoutName = 63700;
inline constexpr int32_t kLastLayoutName = 63752;  ///< the last layout name

// ---- A calculation program's own texts -----------------------------------------
/// The block is the program's: the library ships no text in it, and a program
/// puts its captions (with their explanations at caption id + 1), descriptors,
/// value lists (list ids 30000-39999), default texts and its layout's name
/// there, in a catalogue file of its resource folder (docs/layouts.md).
inline constexpr int32_t kFirstProgramText = 70000;
inline constexpr int32_t kLastProgramText = 79999;  ///< the last id of the block

// ---- The check words of clsErrChr ----------------------------------------------
inline constexpr int32_t kMoreThan = 53300;         ///< "多于"
inline constexpr int32_t kFewerThan = 53302;        ///< "少于"
inline constexpr int32_t kRemove = 53304;           ///< "删除"
inline constexpr int32_t kAdd = 53306;              ///< "添加"
inline constexpr int32_t kAboveWord = 53308;        ///< "大于 "
inline constexpr int32_t kNotBelowWord = 53310;     ///< "不小于 "
inline constexpr int32_t kAndBelowWord = 53312;     ///< "、且小于 "
inline constexpr int32_t kAndNotAboveWord = 53314;  ///< "、且不大于 "
inline constexpr int32_t kListItemsName = 53316;    ///< "输入框的下拉列表项目"
inline constexpr int32_t kInputErrorTitle = 53110;  ///< "输入错误！"

}  // namespace zelkora::text_id
