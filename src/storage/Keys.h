// Keys of bill dictionaries, display rows, files and settings. Tests spell keys as literals, so that a wrong constant
// here cannot agree with itself.
#pragma once

#include <string_view>

namespace tallyvane::key {

// The bill dictionary, in the order in which it is written.
inline constexpr std::string_view Name = "Name";
inline constexpr std::string_view Bid = "Bid";
inline constexpr std::string_view Icon = "Icon";
inline constexpr std::string_view DueDate = "DueDate";
inline constexpr std::string_view Repeat = "Repeat";
inline constexpr std::string_view Average = "Average";
inline constexpr std::string_view LastPayment = "LastPayment";
inline constexpr std::string_view TotalPaid = "TotalPaid";
inline constexpr std::string_view RemindMe = "RemindMe";
inline constexpr std::string_view PaySite = "PaySite";
inline constexpr std::string_view PaymentList = "PaymentList";
inline constexpr std::string_view ReminderDays = "ReminderDays";
inline constexpr std::string_view Balance = "Balance";
inline constexpr std::string_view Interest = "Interest";
inline constexpr std::string_view Notes = "Notes";
inline constexpr std::string_view Tags = "Tags";
inline constexpr std::string_view Amount = "Amount";
inline constexpr std::string_view PayType = "PayType";
inline constexpr std::string_view Rev = "Rev";

// An entry of the payment list; its amount is under "Amount" too.
inline constexpr std::string_view Date = "Date";
inline constexpr std::string_view Note = "Note";
inline constexpr std::string_view Receipt = "Receipt";

/// The "PayType" of a bill that is paid automatically.
inline constexpr int paidAutomatically = 1;

// Added to a bill dictionary for display.
inline constexpr std::string_view DateWasModified = "DateWasModified";
inline constexpr std::string_view HumanRepeat = "HumanRepeat";
inline constexpr std::string_view HumanDueDate = "HumanDueDate";
inline constexpr std::string_view SortableDueDate = "SortableDueDate";
inline constexpr std::string_view DueIcon = "DueIcon";
inline constexpr std::string_view DueString = "DueString";

// What a bill's payments come to.
inline constexpr std::string_view Highest = "Highest";
inline constexpr std::string_view Lowest = "Lowest";
inline constexpr std::string_view Total = "Total";
inline constexpr std::string_view TotalThisYear = "TotalThisYear";
inline constexpr std::string_view TotalLastYear = "TotalLastYear";
inline constexpr std::string_view TotalFall = "TotalFall";
inline constexpr std::string_view TotalSpring = "TotalSpring";
inline constexpr std::string_view TotalSummer = "TotalSummer";
inline constexpr std::string_view TotalWinter = "TotalWinter";
inline constexpr std::string_view ThisYearString = "ThisYearString";
inline constexpr std::string_view LastYearString = "LastYearString";
inline constexpr std::string_view ThisYearHeight = "ThisYearHeight";
inline constexpr std::string_view LastYearHeight = "LastYearHeight";

// A graph of a bill's payments.
inline constexpr std::string_view Labels = "Labels";
inline constexpr std::string_view Amounts = "Amounts";
inline constexpr std::string_view Heights = "Heights";
inline constexpr std::string_view Images = "Images";

// The income file and a source of income; its repeat code and amount are under "Repeat" and "Amount" too.
inline constexpr std::string_view IncomeSources = "IncomeSources";
inline constexpr std::string_view PayDate = "PayDate";
inline constexpr std::string_view IncomeDates = "IncomeDates";
inline constexpr std::string_view CreationDate = "CreationDate";

// The bill index, and its mirror in the cloud store.
inline constexpr std::string_view ActiveBills = "ActiveBills";
inline constexpr std::string_view ArchivedBills = "ArchivedBills";
inline constexpr std::string_view DeletedBills = "DeletedBills";
inline constexpr std::string_view cloudActiveBills = "activebills";
inline constexpr std::string_view cloudArchivedBills = "archivedbills";
inline constexpr std::string_view cloudDeletedBills = "deletedbills";
inline constexpr std::string_view cloudTags = "tagindex";

// The queue of mails, and a message in it.
inline constexpr std::string_view PendingMessages = "PendingMessages";
inline constexpr std::string_view mailSubject = "subject";
inline constexpr std::string_view mailBody = "emailBody";
inline constexpr std::string_view mailDueDate = "dueDate";
inline constexpr std::string_view mailAlarmDate = "alarmDate";
inline constexpr std::string_view mailBillTitle = "billTitle";

// Settings of the user. Not all carry the prefix; that is deliberate, as are "Cusom" and the M of "AutoMatic".
inline constexpr std::string_view CustomLocationEnabled = "QMCustomLocationEnabled";
inline constexpr std::string_view CustomLocationBookmark = "QMCustomLocationBookmark";
inline constexpr std::string_view CustomLocationTempPath = "QMCusomLocationTempPath";
inline constexpr std::string_view DropboxSyncEnabled = "QMDropboxSyncEnabled";
inline constexpr std::string_view PlaceChange = "QMPlaceChange";
inline constexpr std::string_view iCloudSyncEnabled = "iCloudSyncEnabled";
inline constexpr std::string_view LastBackup = "QMLastBackup";
inline constexpr std::string_view LastBackupUID = "QMLastBackupUID";
inline constexpr std::string_view DueSoonDays = "QMDueSoonDays";
inline constexpr std::string_view HideAutomaticBillsInOverview = "QMHideAutoMaticBillsInOverview";
inline constexpr std::string_view AvoidWeekends = "QMAvoidWeekends";
inline constexpr std::string_view DontCountAuto = "QMDontCountAuto";
inline constexpr std::string_view EnableStartAtLoginMenu = "EnableStartAtLoginMenu";
inline constexpr std::string_view ShouldDisplayStatusTitle = "QMShouldDisplayStatusTitle";
inline constexpr std::string_view CalendarList = "QMCalendarList";
inline constexpr std::string_view ReminderCalendarNumber = "QMReminderCalendarNumber";
inline constexpr std::string_view CalendarFolder = "QMCalendarFolder";
inline constexpr std::string_view ReminderTime = "QMReminderTime";
inline constexpr std::string_view RemindersTasks = "QMRemindersTasks";
inline constexpr std::string_view ReminderEvents = "QMReminderEvents";
inline constexpr std::string_view EnableNotificationCenter = "QMEnableNotificationCenter";
inline constexpr std::string_view EmailsEnabled = "QMEmailsEnabled";
inline constexpr std::string_view LEMAddress = "LEMAddress";
inline constexpr std::string_view PlayInterfaceSounds = "QMXPlayInterfaceSounds";
inline constexpr std::string_view WhichSoundEffect = "QMXWhichSoundEffect";

// The group suite, shared with the widget.
inline constexpr std::string_view NumberOfBillsDueSoon = "NumberOfBillsDueSoon";
inline constexpr std::string_view NextBill = "NextBill";

}  // namespace tallyvane::key
