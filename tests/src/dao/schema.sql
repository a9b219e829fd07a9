CREATE TABLE CONTACT (contactId VARCHAR,loginName VARCHAR,salutation VARCHAR,firstName VARCHAR,name VARCHAR,latinFirstName VARCHAR,latinName VARCHAR,language VARCHAR,timezone VARCHAR,officePhone VARCHAR,officePhoneCan VARCHAR,attendant VARCHAR,colleague VARCHAR,assistant VARCHAR,email VARCHAR,fax VARCHAR,faxCan VARCHAR,voicemail VARCHAR,personalHome VARCHAR,personalHomeCan VARCHAR,personalMobile VARCHAR,personalMobileCan VARCHAR,personalFax VARCHAR,personalFaxCan VARCHAR,personalEmail VARCHAR,collaborationId VARCHAR,isPreviewed BOOLEAN,isPrivate BOOLEAN,type INTEGER,photo VARCHAR,melody VARCHAR,puid varchar(256), lastModificationDate datetime)
CREATE INDEX contact_id_idx ON CONTACT(contactId)
CREATE INDEX type_idx ON CONTACT(type)
CREATE TABLE MISC (contactId VARCHAR,keyName VARCHAR,value VARCHAR)
CREATE INDEX misc_id_idx ON MISC(contactId,keyName)
CREATE TRIGGER del_on_cascade_trg BEFORE DELETE ON CONTACT FOR EACH ROW BEGIN DELETE from MISC WHERE contactId = OLD.contactId; END
CREATE TRIGGER update_on_cascade_trg UPDATE OF lastModificationDate ON contact FOR EACH ROW BEGIN DELETE from MISC WHERE contactId = OLD.contactId; END
CREATE TRIGGER insert_local_MA_contact_trg AFTER INSERT ON CONTACT BEGIN update CONTACT set contactId=('#CONTACT_' || (last_insert_rowid()) || '#') where rowid=last_insert_rowid() and (type='0' or type='5'); end
