#pragma once

// The ids of the program's texts: included by the .rc files of languages/ as well as by C++, so it holds
// nothing but macros. Every language has a text for each of them.

// ---- The language library (langfile.rc), for LoadText ----

// Menus, toolbars, column headers and the tree. Several are titles and captions of windows too; where no
// access key can be marked, the windows leave the "&" out.
#define IDS_NEW_FOLDER 100
#define IDS_DELETE 101
#define IDS_RENAME 102
#define IDS_PROPERTIES 103
#define IDS_CLOSE 104
#define IDS_OPEN 105
#define IDS_COMPRESS 106
#define IDS_EXTRACT 107
#define IDS_COPY 108
#define IDS_PASTE 109
#define IDS_FOLDER 110
#define IDS_NEW 111
#define IDS_RENAME_FOLDER 112
#define IDS_FILE 113
#define IDS_COLUMN_NAME 115
#define IDS_COLUMN_TYPE 116
#define IDS_COLUMN_SIZE 117
#define IDS_COLUMN_MODIFIED 118
#define IDS_COLUMN_PATH 119
#define IDS_UP 120
#define IDS_MY_COMPUTER 123
#define IDS_ENCRYPTED_FILE 124
#define IDS_REFRESH 125

// Titles. NUMBERED_ZIP_TITLE: %x is the number of the archive, %y the number of all.
#define IDS_WARNING_TITLE 300
#define IDS_ERROR_TITLE 301
#define IDS_WINDOW_TITLE 302
#define IDS_CAB_TITLE 303
#define IDS_MARK_TITLE 304
#define IDS_FOLDER_NOT_MADE_TITLE 305
#define IDS_ZIP_TITLE 306
#define IDS_RAR_TITLE 307
#define IDS_NUMBERED_ZIP_TITLE 308

// The explorer. Some messages are put together of several texts:
//   CAB_NOT_MADE 'path'. and below it one of IDS_PACK_...
//   DELETING or RENAMING "caption" CHANGE_NOT_POSSIBLE
//   MARKING "caption" MARK_NOT_POSSIBLE
//   FREE_SPACE: figures
#define IDS_WELCOME 500
#define IDS_LOCATION_LABEL 501
#define IDS_FREE_SPACE_LABEL 502
#define IDS_CAB_NOT_MADE 503
#define IDS_NOT_ON_CLIPBOARD 504
#define IDS_ASK_DELETE_FILES 505
#define IDS_ASK_DELETE_FOLDER 506
#define IDS_DELETE_TITLE 507
#define IDS_ASK_RENAME_MARKED 509
#define IDS_NO_PROPERTIES 511
#define IDS_ASK_FOLDER_NAME 512
#define IDS_FREE_SPACE 562
#define IDS_DELETING 571
#define IDS_CHANGE_NOT_POSSIBLE 572
#define IDS_RENAMING 573
#define IDS_MARKING 574
#define IDS_MARK_NOT_POSSIBLE 575
#define IDS_FOLDER_NOT_REACHED 579

// Compressing. UNSTORABLE_NAMES and RENAME_AND_REPEAT are above a list of the files.
#define IDS_NEEDED_IN_PLACE 563
#define IDS_COMPRESSING 564
#define IDS_COMPRESSING_STOPPED 565
#define IDS_UNSTORABLE_NAMES 566
#define IDS_RENAME_AND_REPEAT 567
#define IDS_NO_FILE_IN_FOLDER 576
#define IDS_PATH_TOO_LONG 581
#define IDS_FILE_EMPTY 582
#define IDS_FILE_ENCRYPTED 583

// The archive windows.
#define IDS_EXTRACT_TO_OTHER 513
#define IDS_EXTRACT_TO_SAME 514
#define IDS_SELECT_ALL 515
#define IDS_CHOOSE_FOLDER 520
#define IDS_DELETE_ARCHIVE 521
#define IDS_EXTRACTING_TO 522
#define IDS_NOT_ONE_KIND 523
#define IDS_NOTHING_SELECTED 524
#define IDS_EXTRACTION_FAILED 525
#define IDS_NOT_ALL_EXTRACTED 561
#define IDS_EXTRACTING 602
#define IDS_STOPPING_AFTER_FILE 603
#define IDS_EMPTY_FOLDER 608
#define IDS_NO_ENTRIES 610
#define IDS_NOT_READ_BACK 612
#define IDS_STOPPED 613
#define IDS_NO_SUCH_FOLDER 614
#define IDS_CHECKING 615

// ZIP archives. %entry is the name of the folder or of the entry.
#define IDS_DAMAGED_DATA 541
#define IDS_FOLDER_NOT_MADE 542
#define IDS_UNKNOWN_RECORD 554
#define IDS_WRONG_PASSWORD 555
#define IDS_NO_LOCAL_HEADER 556
#define IDS_WRONG_CHECKSUM 557
#define IDS_NO_DATA 558
#define IDS_WRONG_SIZE 559
#define IDS_NOT_WRITTEN 560

// RAR archives, extracting. After the first there is one for each result code of the RAR library, in the
// order of the codes. ARCHIVE_GONE and NOT_RAR to WRITE_ERROR are followed by a new line with the name of the
// archive or the entry; %entry in BAD_DATA is that name.
#define IDS_RAR_ARCHIVE_GONE 528
#define IDS_RAR_NO_MEMORY 529
#define IDS_RAR_BAD_DATA 530
#define IDS_RAR_NOT_RAR 531
#define IDS_RAR_UNKNOWN_FORMAT 532
#define IDS_RAR_CANNOT_OPEN 533
#define IDS_RAR_CANNOT_CREATE 534
#define IDS_RAR_CANNOT_CLOSE 535
#define IDS_RAR_READ_ERROR 536
#define IDS_RAR_WRITE_ERROR 537
#define IDS_RAR_BUFFER_TOO_SMALL 538

// RAR archives, listing. The program ends after each of these.
#define IDS_RAR_STOP_UNKNOWN_FORMAT 546
#define IDS_RAR_STOP_NOT_RAR 547
#define IDS_RAR_STOP_CANNOT_CREATE 548
#define IDS_RAR_STOP_CANNOT_OPEN 549
#define IDS_RAR_STOP_CANNOT_CLOSE 550
#define IDS_RAR_STOP_READ_ERROR 551
#define IDS_RAR_STOP_WRITE_ERROR 552
#define IDS_RAR_STOP_BAD_DATA 553

// Message boxes and prompts. %n in AND_MORE is how many more messages there are.
#define IDS_TAKE_REST 600
#define IDS_AND_MORE 601
#define IDS_OK 604
#define IDS_CANCEL 605
#define IDS_YES 606
#define IDS_NO 607

// Why a cabinet was not made: each is below the path of the file or folder. CANNOT_READ and CANNOT_WRITE are
// followed by the reason that the operating system gives.
#define IDS_PACK_CANNOT_READ 630
#define IDS_PACK_LINK 631
#define IDS_PACK_SPECIAL_FILE 632
#define IDS_PACK_EMPTY_FOLDER 633
#define IDS_PACK_NAME 634
#define IDS_PACK_FILE_TOO_LARGE 635
#define IDS_PACK_TOO_MUCH 636
#define IDS_PACK_CHANGED 637
#define IDS_PACK_CANNOT_WRITE 638
#define IDS_PACK_READ_BACK 639

// Copying, deleting and renaming. X_OF_Y: how much is done, of how much. NOT_ALL_COPIED, NOT_ALL_DELETED and
// NOT_RENAMED are above the files and the reasons; COPY_INTO_ITSELF is such a reason.
#define IDS_COPYING_TITLE 640
#define IDS_DELETING_TITLE 641
#define IDS_STOP 642
#define IDS_STOPPING 643
#define IDS_COUNTING_FILES 644
#define IDS_X_OF_Y 645
#define IDS_NOT_ALL_COPIED 646
#define IDS_NOT_ALL_DELETED 647
#define IDS_NOT_RENAMED 648
#define IDS_COPY_INTO_ITSELF 649

// The properties window. COUNTS: %x files and %y folders. BYTES: %n is the number of bytes.
#define IDS_PROPERTY_LOCATION 650
#define IDS_PROPERTY_TYPE 651
#define IDS_PROPERTY_SIZE 652
#define IDS_PROPERTY_CONTENT 653
#define IDS_PROPERTY_MODIFIED 654
#define IDS_PROPERTY_ATTRIBUTES 655
#define IDS_PROPERTY_READ_ONLY 656
#define IDS_PROPERTY_HIDDEN 657
#define IDS_PROPERTY_COUNTS 658
#define IDS_PROPERTY_BYTES 659
#define IDS_PROPERTY_FOLDER_TYPE 660
#define IDS_PROPERTY_FREE_SPACE 661

// ---- The second text library (lic.rc), for LoadExtraText; the same number may name another text above ----

// The About box: its buttons, title and notice. %s is the name of the product.
#define IDS_EXTRA_OK 100
#define IDS_EXTRA_SYSTEM_INFO 112
#define IDS_EXTRA_ABOUT_TITLE 303
#define IDS_EXTRA_LEGAL_NOTICE 500

// The Help menu. %s is the name of the product.
#define IDS_EXTRA_HELP 103
#define IDS_EXTRA_WHAT_IS 104
#define IDS_EXTRA_ONLINE_SUPPORT 105
#define IDS_EXTRA_CHECK_FOR_UPDATES 106
#define IDS_EXTRA_ABOUT 107

// Messages. NOT_ADMINISTRATOR is shown at each start to a user who is not an administrator.
#define IDS_EXTRA_NO_SUPPORT_PAGE 515
#define IDS_EXTRA_NO_HELP_DOCUMENT 527
#define IDS_EXTRA_NOT_ADMINISTRATOR 528
