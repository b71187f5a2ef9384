// The product's own words, which the model looks up by the English text; never compiled, only read for the catalogues.
// Words are put together as "Every" "2" "weeks", "Overdue by" "3" "days", "Paid" "2" "times".
// translators: before a number and a unit: Every 2 weeks
word("Every")
word("day") word("days") word("week") word("weeks") word("month") word("months") word("quarter") word("year")
word("Twice per month") word("Never") word("Due today")
// translators: before a number and a unit: Due in 3 days
word("Due in")
// translators: before a number and a unit: Due in about 2 months
word("Due in about")
// translators: before a number and a unit: Due in over 1 year
word("Due in over")
// translators: before a number and a unit: Overdue by 3 days
word("Overdue by")
// translators: before a number and "times": Paid 2 times
word("Paid")
// translators: behind a number: Paid 1 time
word("time")
// translators: behind a number: Paid 2 times
word("times")
word("Overdue") word("Due Soon") word("Due Later") word("No Payments Yet") word("Attach Receipt") word("Attach")
// translators: with a bill's name behind it: the title of an event or a notification
word("Pay ")
// translators: with a date behind it
word("Bill is due on")
word("View") word("Show Tallyvane") word("Press any key to close this window.") word("Message Sent")
word("Send Test Message")
// Why no mail goes out.
// translators: stands in "No mail is sent: {}."
word("no API key of a mail service is set up")
// translators: stands in "No mail is sent: {}."
word("no address to send to is set (LEMAddress)")
// The titles of the icons.
// translators: the title of an icon
word("Mortgage, Rent & Home")
// translators: the title of an icon
word("Credit Card - General")
// translators: the title of an icon
word("Credit Card - Other")
// translators: the title of an icon
word("Car")
// translators: the title of an icon
word("Insurance")
// translators: the title of an icon
word("Cell Phone & iPhone")
// translators: the title of an icon
word("Phone")
// translators: the title of an icon
word("Medical")
// translators: the title of an icon
word("Internet")
// translators: the title of an icon
word("Electric & Utility")
// translators: the title of an icon
word("Gas")
// translators: the title of an icon
word("Water")
// translators: the title of an icon
word("Trash")
// translators: the title of an icon
word("Computer")
// translators: the title of an icon
word("Baby & Childcare")
// translators: the title of an icon
word("Gym & Sports")
// translators: the title of an icon
word("Subscription")
// translators: the title of an icon
word("School & Student Loans")
// translators: the title of an icon
word("Television & Video")
// translators: the title of an icon
word("Furniture")
// translators: the title of an icon
word("Appliance")
// translators: the title of an icon
word("Landscaping & Lawn")
// translators: the title of an icon
word("Security & Alarm")
// translators: the title of an icon
word("Donations")
// translators: the title of an icon
word("Legal")
// translators: the title of an icon
word("Business & Travel")
// translators: the title of an icon
word("Mail & Post Office Box")
// translators: the title of an icon
word("Locker & Deposit Box")
// translators: the title of an icon
word("Shopping")
// translators: the title of an icon
word("Ticket")
// translators: the title of an icon
word("Taxes & General")
